#pragma once

#include "media/Stream.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ipncsdk::media {

/// A network camera's address, taken apart and checked. Only rtsp and rtsps addresses without blanks, control
/// characters or quotes come through, so that nothing of the text can mean anything else to whoever reads it next.
class RtspAddress final {
public:
    /// Nothing when the text is no such address. User name and password of the source win over those in the URL.
    static std::optional<RtspAddress> parse(const RtspSource& source);

    /// Host name or numeric address; IPv6 without its brackets.
    const std::string& host() const { return host_; }
    std::uint16_t port() const { return port_; }
    bool secure() const { return secure_; }

    /// The whole address with user name and password in it, percent-encoded: never to be logged.
    std::string url() const { return urlTo(host_, port_); }
    /// The same address at another host and port, as seen through a relay.
    std::string urlTo(const std::string& host, std::uint16_t port) const { return urlTo(host, port, credentials_); }

    /// The whole address without user name and password, as requests carry it.
    std::string plainUrl() const { return urlTo(host_, port_, std::string()); }
    /// As they are, not encoded; empty without them.
    const std::string& user() const { return user_; }
    const std::string& password() const { return password_; }

    /// How user name and password stand in the address: encoded, with a colon between; empty without them.
    const std::string& credentials() const { return credentials_; }

private:
    std::string urlTo(const std::string& host, std::uint16_t port, const std::string& credentials) const;

    bool secure_ = false;
    std::string host_;
    std::uint16_t port_ = 0;
    std::string user_;
    std::string password_;
    std::string credentials_;
    std::string path_; ///< with its slash and the query
};

} // namespace ipncsdk::media
