#include "manageWidget/AddressChecks.h"

#include <QCoreApplication>
#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace corvanta::manage {
namespace {

constexpr int LongestAddress = 256; // characters, as the service has it
constexpr int LongestSsid = 32;     // bytes
constexpr int ShortestPassword = 8; // characters
constexpr int LongestPassword = 63; // characters
constexpr quint32 ClassA = 0xFF000000;
constexpr quint32 Loopback = 0x7F000000;
constexpr quint32 Multicast = 0xE0000000; ///< from here on no host

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AddressChecks)
};

bool isMask(quint32 mask) {
    const quint32 rest = ~mask;
    return mask != 0 && rest != 0 && (rest & (rest + 1)) == 0;
}

/// Whether a host of the net that `mask` cuts out can have it.
bool isHost(quint32 address, quint32 mask) {
    const quint32 host = address & ~mask;
    return (address & ClassA) != 0 && (address & ClassA) != Loopback && address < Multicast && host != 0 &&
           host != ~mask;
}

bool hasBlanksOrControls(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar one) { return one.isSpace() || one.category() == QChar::Other_Control; });
}

bool isUrl(const QString& address, const QStringList& schemes) {
    if (address.size() > LongestAddress || hasBlanksOrControls(address))
        return false;
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && schemes.contains(url.scheme()) && !url.host().isEmpty() && url.port() != 0 &&
           !url.hasFragment();
}

} // namespace

std::optional<quint32> ipv4(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return std::nullopt;
    quint32 address = 0;
    for (const QString& part : parts) {
        bool isNumber = false;
        const uint number = part.toUInt(&isNumber);
        // The number written again: signs, blanks and leading zeros (octal elsewhere) are none.
        if (!isNumber || number > 255 || QString::number(number) != part)
            return std::nullopt;
        address = address << 8 | number;
    }
    return address;
}

std::optional<QString> checkWired(const WiredAddress& address) {
    if (address.dhcp)
        return std::nullopt;
    const auto mask = ipv4(address.mask);
    if (!mask || !isMask(*mask))
        return Texts::tr("子网掩码不正确!");
    const auto ip = ipv4(address.ip);
    if (!ip || !isHost(*ip, *mask))
        return Texts::tr("IP地址不正确!");
    const auto gateway = ipv4(address.gateway);
    if (!gateway || !isHost(*gateway, *mask))
        return Texts::tr("网关不正确!");
    if ((*gateway & *mask) != (*ip & *mask))
        return Texts::tr("网关与IP地址不在同一网段!");
    if (*gateway == *ip)
        return Texts::tr("网关不能与IP地址相同!");
    if (!address.dns.isEmpty() && !ipv4(address.dns))
        return Texts::tr("DNS不正确!");
    return std::nullopt;
}

std::optional<QString> checkWifi(const QString& ssid, const QString& password, const QString& security) {
    if (ssid.isEmpty())
        return Texts::tr("请输入无线网络名称!");
    if (ssid.toUtf8().size() > LongestSsid)
        return Texts::tr("无线网络名称过长，最多32个字节!");
    const auto isControl = [](QChar one) {
        return one.category() == QChar::Other_Control;
    };
    if (std::any_of(ssid.begin(), ssid.end(), isControl) || std::any_of(password.begin(), password.end(), isControl))
        return Texts::tr("不能包含控制字符!");
    if (security == QLatin1String("open"))
        return password.isEmpty() ? std::nullopt : std::optional(Texts::tr("开放的网络没有密码!"));
    if (password.size() < ShortestPassword || password.size() > LongestPassword)
        return Texts::tr("无线密码为8到63个字符!");
    return std::nullopt;
}

std::optional<QString> checkRtsp(const QString& label, const QString& address) {
    if (isUrl(address, {QStringLiteral("rtsp")}))
        return std::nullopt;
    return Texts::tr("%1不正确，格式为 rtsp://主机[:端口]/路径").arg(label);
}

std::optional<QString> checkCameraService(const QString& address) {
    const QString whole = address.contains(QStringLiteral("://")) ? address : QStringLiteral("http://") + address;
    if (isUrl(whole, {QStringLiteral("http"), QStringLiteral("https")}))
        return std::nullopt;
    return Texts::tr("摄像机地址不正确!");
}

} // namespace corvanta::manage
