#pragma once

#include "onvif/HttpPost.h"
#include "onvif/Soap.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace ipncsdk::onvif {

struct CameraAddress {
    std::string deviceUrl; ///< the device service, or "host[:port]"
    Credentials credentials;
};

/// Talks to the services of one camera: its clock, its addresses, the way in which it wants passwords. For one thread
/// at a time; every call may wait for the network as long as the transport allows.
class CameraSession final {
public:
    using Now = std::function<Time()>;

    /// `now` is this machine's time of day; the system's when empty.
    CameraSession(CameraAddress address, Transport transport, Now now = {});
    CameraSession(const CameraSession&) = delete;
    CameraSession& operator=(const CameraSession&) = delete;

    /// Calls an operation of the service whose namespace is `service`. `arguments` is markup inside the operation's
    /// element, where the prefixes "q" (the service) and "tt" (the schema) hold. The first call finds out about the
    /// camera's clock and its services.
    Outcome<SoapReply> call(const char* service, const std::string& operation, const std::string& arguments = {});

    /// True when the camera told an address for this service. Asks it when it has not been asked yet.
    Outcome<bool> has(const char* service);

    /// An address that the camera told, with the host that the camera answers on: what it says of itself may be an
    /// address inside a network that this machine is not in. Names and passwords never go to another host.
    [[nodiscard]] std::string reachable(Url told) const;

private:
    /// In which form the camera has accepted the password.
    enum class Way { Token, TokenInOwnTime, HttpDigest };

    Outcome<Done> begin();
    Outcome<Done> readServices();
    Outcome<Done> readCapabilities();
    void enter(const std::string& service, const std::string& told);
    Outcome<SoapReply> ask(const Url& url, const std::string& service, const std::string& operation,
                           const std::string& arguments);
    Outcome<SoapReply> askAs(Way way, const Url& url, const std::string& service, const std::string& operation,
                             const std::string& arguments);
    /// What to try when the usual way was refused.
    [[nodiscard]] std::optional<Way> otherWay() const;
    [[nodiscard]] Time now() const { return now_ ? now_() : std::chrono::system_clock::now(); }

    const CameraAddress address_;
    const Transport transport_;
    const Now now_;
    std::optional<Url> device_; ///< nothing when the address is none
    bool begun_ = false;
    std::chrono::system_clock::duration skew_{0}; ///< the camera's time minus this machine's
    bool digestOffered_ = false;                  ///< by the last answer
    Way way_ = Way::Token;
    bool trusted_ = false;                ///< the camera has answered what wants a password
    std::optional<Failure> refused_;      ///< once the password is refused it is not tried again: cameras lock out
    std::map<std::string, Url> services_; ///< by namespace
};

} // namespace ipncsdk::onvif
