#include "base/ProxySettings.h"

ProxySettings ProxySettings::fromMap(const QVariantMap& map) {
    const auto text = [&map](const char* key) {
        return map.value(QLatin1String(key)).toString().toStdString();
    };
    ProxySettings result;
    result.host = text("proxyHostName");
    const int port = map.value(QStringLiteral("proxyPort")).toInt();
    result.port = port > 0 && port <= 0xffff ? static_cast<std::uint16_t>(port) : std::uint16_t{0};
    result.user = text("proxyUser");
    result.password = text("proxyPassword");
    result.kind = text("proxyType") == "http" ? Kind::Http : Kind::Socks5;
    return result;
}
