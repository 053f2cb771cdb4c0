#pragma once

#include <QString>

#include <optional>

/// Addresses and names of networks, checked before anything is sent. Each gives the text to show instead of sending;
/// nothing when the value is one.
namespace corvanta::manage {

/// The wired address of a device. With `dhcp` the other members say nothing.
struct WiredAddress {
    bool dhcp = false;
    QString ip;
    QString mask;
    QString gateway;
    QString dns; ///< may be empty
};

/// Four decimal numbers without leading zeros; as a number, the first one highest.
std::optional<quint32> ipv4(const QString& text);

std::optional<QString> checkWired(const WiredAddress& address);
/// `security` is "open", "wpa2" or "wpa3"; an open network has no password.
std::optional<QString> checkWifi(const QString& ssid, const QString& password, const QString& security);
/// rtsp://[user[:password]@]host[:port][/path]; `label` names the field in the text.
std::optional<QString> checkRtsp(const QString& label, const QString& address);
/// host[:port], http://... or https://...
std::optional<QString> checkCameraService(const QString& address);

} // namespace corvanta::manage
