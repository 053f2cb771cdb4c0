#include "monitor/SettingChecks.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace corvanta::settings {

namespace {

constexpr int LongestMinutes = 24 * 60;

const QString NoLimit = QStringLiteral("不限"); // as it is stored

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SettingChecks)
};

std::optional<QString> checkName(const QString& label, const QString& name) {
    if (name.size() > LongestName)
        return Texts::tr("%1不能超过%2个字符").arg(label).arg(LongestName);
    if (!std::all_of(name.begin(), name.end(),
                     [](QChar character) { return character.isPrint() || character.isSurrogate(); }))
        return Texts::tr("%1含有不能显示的字符").arg(label);
    return std::nullopt;
}

/// A decimal number without sign or blanks; -1 for anything else.
int wholeNumber(const QString& text) {
    const bool digits = std::all_of(text.begin(), text.end(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && digits ? value : -1;
}

} // namespace

std::optional<QString> checkApplicationName(const QString& name) {
    const QString label = Texts::tr("APP名称");
    if (name.trimmed().isEmpty())
        return Texts::tr("%1不能为空，请录入").arg(label);
    return checkName(label, name);
}

std::optional<QString> checkCompanyName(const QString& name) {
    return checkName(Texts::tr("公司名称"), name);
}

std::optional<QString> checkLongestOpening(const QString& text) {
    const int minutes = wholeNumber(text);
    if (text == Texts::tr("不限") || (minutes >= 1 && minutes <= LongestMinutes))
        return std::nullopt;
    return Texts::tr("视频打开最长时间应为“不限”或1到%1的整数").arg(LongestMinutes);
}

QVariant longestOpeningFromText(const QString& text) {
    return text == Texts::tr("不限") ? QVariant(NoLimit) : QVariant(text.toInt());
}

QString longestOpeningText(const QVariant& stored) {
    const QString text = stored.toString();
    return text.toInt() == 0 ? Texts::tr("不限") : text;
}

std::optional<QString> checkProxy(const ProxyEntries& entries) {
    if (entries.host.isEmpty())
        return Texts::tr("请录入代理服务器地址");
    const auto breaksHost = [](QChar character) {
        return character.isSpace() || !character.isPrint() || character == QLatin1Char('/') ||
               character == QLatin1Char('@');
    };
    if (std::any_of(entries.host.begin(), entries.host.end(), breaksHost))
        return Texts::tr("代理服务器地址不正确");
    const int port = wholeNumber(entries.port);
    if (port < 1 || port > 0xffff)
        return Texts::tr("代理端口应为1到65535的整数");
    if (entries.user.isEmpty() && !entries.password.isEmpty())
        return Texts::tr("请录入代理用户名，或清空密码");
    return std::nullopt;
}

QStringList soundSuffixes() {
    return {QStringLiteral("wav"), QStringLiteral("mp3"), QStringLiteral("ogg")};
}

std::optional<QString> checkSoundFile(const QString& type, const QString& path) {
    if (path.isEmpty())
        return std::nullopt;
    const QFileInfo file(path);
    if (!soundSuffixes().contains(file.suffix().toLower()))
        return Texts::tr("%1的声音文件应为wav、mp3或ogg文件").arg(type);
    if (!file.isFile() || !file.isReadable())
        return Texts::tr("%1的声音文件不存在或无法读取").arg(type);
    return std::nullopt;
}

} // namespace corvanta::settings
