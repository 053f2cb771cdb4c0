#include "onvif/CameraSession.h"

#include "onvif/Names.h"

#include <array>
#include <utility>

namespace ipncsdk::onvif {

namespace {

using std::chrono::seconds;

/// A camera whose clock differs by less takes every digest.
constexpr seconds smallSkew{5};
/// One whose clock differs by more may refuse a right password for its time.
constexpr seconds largeSkew{300};
constexpr std::size_t mostServices = 64;
constexpr long httpRedirect = 300;
constexpr long httpUnauthorized = 401;

/// The capabilities of older cameras and the services that they mean.
struct Capability {
    const char* local;
    const char* service;
};
constexpr std::array capabilities = {
    Capability{"Media", ns::media},
    Capability{"PTZ", ns::ptz},
    Capability{"Imaging", ns::imaging},
};

bool isRefusal(const Outcome<SoapReply>& reply) {
    return !reply && (reply.failure().refusal == Refusal::Password || reply.failure().refusal == Refusal::Clock);
}

/// Faults come with any status; without one the status is the answer.
Outcome<SoapReply> read(const HttpAnswer& answer, const xml::Name& wanted) {
    auto reply = SoapReply::read(answer.body, wanted);
    if (reply || reply.failure().refusal == Refusal::Clock)
        return reply;
    Failure failure = reply.failure();
    if (failure.refusal == Refusal::NoOnvif && answer.status >= httpRedirect)
        failure.text = "HTTP " + std::to_string(answer.status);
    if (answer.status == httpUnauthorized)
        failure.refusal = Refusal::Password;
    return failure;
}

std::optional<int> wholeNumber(const pugi::xml_node& element) {
    const auto value = xml::numberOf(element);
    if (!value || *value < 0 || *value > 9999)
        return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<Time> timeIn(const pugi::xml_node& utc) {
    const auto at = [&](const char* group, const char* name) {
        return wholeNumber(xml::descend(utc, ns::schema, {group, name})).value_or(-1);
    };
    return timeOf(at("Date", "Year"), at("Date", "Month"), at("Date", "Day"), at("Time", "Hour"),
                  at("Time", "Minute"), at("Time", "Second"));
}

std::string operationMarkup(const std::string& service, const std::string& operation, const std::string& arguments) {
    return "<q:" + operation + " xmlns:q=\"" + service + "\" xmlns:tt=\"" + ns::schema + "\">" + arguments +
           "</q:" + operation + ">";
}

} // namespace

CameraSession::CameraSession(CameraAddress address, Transport transport, Now now)
    : address_(std::move(address))
    , transport_(std::move(transport))
    , now_(std::move(now))
    , device_(deviceServiceUrl(address_.deviceUrl)) {}

Outcome<SoapReply> CameraSession::call(const char* service, const std::string& operation,
                                       const std::string& arguments) {
    if (auto begun = begin(); !begun)
        return begun.failure();
    const auto found = services_.find(service);
    if (found == services_.end())
        return Failure{Refusal::NotSupported, "the camera has no such service"};
    return ask(found->second, service, operation, arguments);
}

Outcome<bool> CameraSession::has(const char* service) {
    if (auto begun = begin(); !begun)
        return begun.failure();
    return services_.count(service) > 0;
}

Outcome<Done> CameraSession::begin() {
    if (!device_)
        return Failure{Refusal::BadAddress, "this is no address of a camera"};
    if (begun_)
        return Done{};
    // The only question that every camera answers without a password. Who does not answer it at all is not there.
    const std::string question = envelope({}, operationMarkup(ns::device, "GetSystemDateAndTime", {}));
    const auto answer = post(transport_, *device_, "application/soap+xml; charset=utf-8", question, nullptr);
    if (!answer)
        return answer.failure();
    const auto reply = read(*answer, {ns::device, "GetSystemDateAndTimeResponse"});
    if (!reply && reply.failure().refusal == Refusal::NoOnvif)
        return reply.failure();
    if (reply) {
        const auto told = timeIn(xml::descend(xml::child(reply->content(), {ns::device, "SystemDateAndTime"}),
                                              ns::schema, {"UTCDateTime"}));
        skew_ = told ? *told - now() : skew_;
    }
    services_.insert_or_assign(ns::device, *device_);
    auto services = readServices();
    // Older cameras know the second question only.
    const Refusal refusal = services.failure().refusal;
    if (refusal == Refusal::NotSupported || refusal == Refusal::Fault || refusal == Refusal::NoOnvif)
        services = readCapabilities();
    begun_ = static_cast<bool>(services);
    return services;
}

Outcome<Done> CameraSession::readServices() {
    const auto reply = ask(*device_, ns::device, "GetServices", "<q:IncludeCapability>false</q:IncludeCapability>");
    if (!reply)
        return reply.failure();
    for (const pugi::xml_node& service : xml::children(reply->content(), {ns::device, "Service"}))
        enter(xml::textOf(xml::child(service, {ns::device, "Namespace"})),
              xml::textOf(xml::child(service, {ns::device, "XAddr"})));
    return Done{};
}

Outcome<Done> CameraSession::readCapabilities() {
    const auto reply = ask(*device_, ns::device, "GetCapabilities", "<q:Category>All</q:Category>");
    if (!reply)
        return reply.failure();
    const pugi::xml_node all = xml::child(reply->content(), {ns::device, "Capabilities"});
    for (const Capability& capability : capabilities)
        enter(capability.service, xml::textOf(xml::descend(all, ns::schema, {capability.local, "XAddr"})));
    return Done{};
}

void CameraSession::enter(const std::string& service, const std::string& told) {
    auto url = parseHttpUrl(told);
    // The device service has answered where it was asked.
    if (!url || service == ns::device || services_.size() >= mostServices)
        return;
    url->host = device_->host;
    services_.insert_or_assign(service, std::move(*url));
}

std::string CameraSession::reachable(Url told) const {
    if (device_)
        told.host = device_->host;
    return told.text();
}

Outcome<SoapReply> CameraSession::ask(const Url& url, const std::string& service, const std::string& operation,
                                      const std::string& arguments) {
    if (refused_)
        return *refused_;
    auto reply = askAs(way_, url, service, operation, arguments);
    if (reply)
        trusted_ = trusted_ || (operation != "GetServices" && operation != "GetCapabilities");
    if (!isRefusal(reply) || address_.credentials.user.empty())
        return reply;
    const Failure first = reply.failure();
    // A password that was taken before is right: the account may not do this one thing.
    if (trusted_ && (way_ != Way::Token || !digestOffered_))
        return Failure{Refusal::Fault, first.text};
    const std::optional<Way> other = otherWay();
    if (other) {
        auto second = askAs(*other, url, service, operation, arguments);
        if (!isRefusal(second)) {
            way_ = *other;
            return second;
        }
    }
    // No time goes into HTTP's own digest: where that is refused as well it is the password.
    const bool clock =
        other != Way::HttpDigest && (first.refusal == Refusal::Clock || std::chrono::abs(skew_) > largeSkew);
    refused_ = Failure{clock ? Refusal::Clock : Refusal::Password, first.text};
    return *refused_;
}

std::optional<CameraSession::Way> CameraSession::otherWay() const {
    if (digestOffered_)
        return Way::HttpDigest;
    // Some cameras tell their local time as if it were UTC, and judge by the right one.
    if (std::chrono::abs(skew_) > smallSkew)
        return Way::TokenInOwnTime;
    return std::nullopt;
}

Outcome<SoapReply> CameraSession::askAs(Way way, const Url& url, const std::string& service,
                                        const std::string& operation, const std::string& arguments) {
    const Credentials& credentials = address_.credentials;
    const bool token = way != Way::HttpDigest && !credentials.user.empty();
    const Time time = way == Way::Token ? now() + skew_ : now();
    const std::string question = envelope(token ? usernameToken(credentials, time) : std::string(),
                                          operationMarkup(service, operation, arguments));
    const std::string type = "application/soap+xml; charset=utf-8; action=\"" + service + "/" + operation + "\"";
    const auto answer = post(transport_, url, type, question, way == Way::HttpDigest ? &credentials : nullptr);
    if (!answer)
        return answer.failure();
    digestOffered_ = answer->status == httpUnauthorized && answer->digestOffered;
    const std::string response = operation + "Response";
    return read(*answer, {service, response});
}

} // namespace ipncsdk::onvif
