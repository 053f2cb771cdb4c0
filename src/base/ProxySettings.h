#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <string>

/// The proxy that device traffic goes through. Standard types, so that SDK threads may read it.
struct ProxySettings {
    enum class Kind { Socks5, Http };

    std::string host;
    std::uint16_t port = 0;
    std::string user;
    std::string password;
    Kind kind = Kind::Socks5;

    /// From the settings' object: "proxyHostName", "proxyPort", "proxyUser", "proxyPassword", and "proxyType"
    /// ("socks5", the default, or "http"). A port outside 1..65535 reads as 0.
    static ProxySettings fromMap(const QVariantMap& map);
};
