#include "api/Engine.h"
#include "base/Text.h"
#include "device/AddedCameras.h"

#include <utility>

namespace ipncsdk::api {

namespace {

constexpr std::size_t longestEcho = 64;

/// The result text of a command.
std::string resultText(const std::string& command, ServiceCode code, Json more = Json::object()) {
    more["type"] = command;
    more["retcode"] = static_cast<int>(code);
    if (code != ServiceCode::Done)
        more["errcode"] = errorText(code);
    return toText(more);
}

/// The device that a command names, for its result.
Json idOf(const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    return {{"ipncid", ipncid && isPlainText(*ipncid, longestEcho) ? *ipncid : std::string()}};
}

} // namespace

const std::vector<Engine::Route>& Engine::commands() {
    static const std::vector<Route> routes = {
        {"login", &Engine::loginCommand},
        {"logout", &Engine::logoutCommand},
        {"freshlist", &Engine::freshListCommand},
        {"freshlocal", &Engine::freshLocalCommand},
        {"setnet", &Engine::setNetCommand},
        {"apconfig", &Engine::wirelessCommand},
        {"QRinfo", &Engine::measuringCommand},
        {"Laserinfo", &Engine::measuringCommand},
        {"avchange", &Engine::videoChangeCommand},
        {"version", &Engine::versionCommand},
        {"try", &Engine::tryCommand},
        {nullptr, &Engine::unknownCommand},
    };
    return routes;
}

void Engine::loginCommand(const RequestPointer& request, const Json& message) {
    lookAround();
    const auto before = accounts_.session().current();
    const Reply reply = accounts_.signIn(message);
    if (before && !service::isSameAccount(before, accounts_.session().current()))
        video_->closeAll(media::StreamError::NotSignedIn);
    watch_->setActive(accounts_.session().current().has_value());
    request->respond(resultText("login", reply.code));
    if (reply.code == ServiceCode::Done)
        tell({{"type", "freshlist"}});
}

void Engine::logoutCommand(const RequestPointer& request, const Json& /*message*/) {
    const ServiceCode code = accounts_.signOut();
    if (code == ServiceCode::Done)
        loggedOut({});
    request->respond(resultText("logout", code));
}

void Engine::freshListCommand(const RequestPointer& request, const Json& /*message*/) {
    lookAround();
    const ServiceCode code = accounts_.session().current() ? ServiceCode::Done : ServiceCode::NotSignedIn;
    request->respond(resultText("freshlist", code));
    if (code == ServiceCode::Done)
        tell({{"type", "freshlist"}});
    else
        tell({{"type", "freshlisterror"}, {"retcode", static_cast<int>(code)}, {"errcode", errorText(code)}});
}

void Engine::freshLocalCommand(const RequestPointer& request, const Json& /*message*/) {
    request->respond(resultText("freshlocal", ServiceCode::Done));
    const auto tellAll = [this] {
        tell({{"type", "freshlocal"}, {"freshlocal", documents_.localDevices()}});
    };
    database_.read("look up the hosts of added cameras", [this](soci::session& sql) {
        found_.setAddedHosts(device::addedHosts(sql, key_));
        return ServiceCode::Done;
    });
    // What is known comes at once; what the network adds, as it answers.
    tellAll();
    finder_->search(tellAll);
}

void Engine::setNetCommand(const RequestPointer& request, const Json& message) {
    lookAround();
    const auto caller = accounts_.session().current();
    const ServiceCode code = caller ? devices_.setAddresses(caller->id, message) : ServiceCode::NotSignedIn;
    request->respond(resultText("setnet", code, idOf(message)));
}

void Engine::wirelessCommand(const RequestPointer& request, const Json& message) {
    lookAround();
    const auto caller = accounts_.session().current();
    const ServiceCode code = caller ? devices_.setWireless(caller->id, message) : ServiceCode::NotSignedIn;
    request->respond(resultText("apconfig", code, idOf(message)));
}

void Engine::measuringCommand(const RequestPointer& request, const Json& message) {
    lookAround();
    const auto caller = accounts_.session().current();
    const ServiceCode code = caller ? devices_.setMeasuring(caller->id, message) : ServiceCode::NotSignedIn;
    request->respond(resultText(textAt(message, "type").value_or(""), code, idOf(message)));
    // The change that was just made is seen like one of another process.
    lookAround();
}

void Engine::videoChangeCommand(const RequestPointer& request, const Json& message) {
    lookAround();
    if (!stopping_)
        video_->change(request, message);
}

void Engine::versionCommand(const RequestPointer& request, const Json& /*message*/) {
    request->respond(resultText("version", ServiceCode::Done, {{"version", IPNCSDK_VERSION}}));
}

void Engine::tryCommand(const RequestPointer& request, const Json& /*message*/) {
    request->respond(resultText("try", ServiceCode::Done));
}

void Engine::unknownCommand(const RequestPointer& request, const Json& message) {
    const auto type = textAt(message, "type");
    const bool named = type && isPlainText(*type, longestEcho);
    request->respond(
        resultText(named ? *type : std::string(), named ? ServiceCode::NotSupported : ServiceCode::BadRequest));
}

} // namespace ipncsdk::api
