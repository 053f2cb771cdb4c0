#include "map/web/TileAddress.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QUrl>

namespace corvanta::map {

namespace {

/// Empty for what no request may go to.
QString serverOf(const QUrl& address) {
    const QString scheme = address.scheme();
    const bool isSecure = scheme == QLatin1String("https");
    if (!isSecure && scheme != QLatin1String("http"))
        return {};
    // What a page's rules can name: letters, digits, dots and hyphens.
    static const QRegularExpression Host(QStringLiteral("\\A[a-z0-9.-]+\\z"));
    const QString host = address.host(QUrl::FullyEncoded).toLower();
    if (!Host.match(host).hasMatch())
        return {};
    constexpr int Http = 80;
    constexpr int Https = 443;
    return scheme + QStringLiteral("://") + host + QLatin1Char(':') +
           QString::number(address.port(isSecure ? Https : Http));
}

/// The template's host with `subdomain` in the place of {s}; the rest filled with numbers.
QUrl example(QString text, const QString& subdomain) {
    text.replace(QLatin1String("{s}"), subdomain);
    for (const char* const number : {"{z}", "{x}", "{y}", "{-y}"})
        text.replace(QLatin1String(number), QStringLiteral("0"));
    text.remove(QLatin1String("{r}"));
    return QUrl(text, QUrl::StrictMode);
}

} // namespace

std::optional<TileAddress> TileAddress::parse(const QString& text) {
    TileAddress address;
    address.text_ = text.trimmed();
    if (address.text_.size() > Longest)
        return std::nullopt;
    // Numbers only behind the host, so that they never choose another server.
    static const QRegularExpression Form(
        QStringLiteral("\\Ahttps?://(?:[^/{}?#@]|\\{s\\})+/(?:[^{}]|\\{(?:[zxyrs]|-y)\\})*\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const bool hasAll =
        address.text_.contains(QLatin1String("{z}")) && address.text_.contains(QLatin1String("{x}")) &&
        (address.text_.contains(QLatin1String("{y}")) || address.text_.contains(QLatin1String("{-y}")));
    if (!hasAll || !Form.match(address.text_).hasMatch())
        return std::nullopt;
    for (const char* const subdomain : {"a", "b", "c"}) {
        const QUrl url = example(address.text_, QLatin1String(subdomain));
        const QString server = url.isValid() ? serverOf(url) : QString();
        if (server.isEmpty())
            return std::nullopt;
        if (!address.servers_.contains(server))
            address.servers_ += server;
    }
    return address;
}

std::optional<QString> TileAddress::problemOf(const QString& text) {
    if (text.trimmed().isEmpty() || parse(text))
        return std::nullopt;
    return QCoreApplication::translate("TileAddress",
                                       "请输入正确的地图服务器地址，例如 https://主机/{z}/{x}/{y}.png");
}

bool TileAddress::covers(const QUrl& address) const {
    const QString server = serverOf(address);
    return !server.isEmpty() && servers_.contains(server);
}

} // namespace corvanta::map
