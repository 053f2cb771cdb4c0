#include "api/Engine.h"
#include "base/Text.h"

#include <algorithm>

namespace ipncsdk::api {

namespace {

constexpr std::size_t longestEcho = 64;

/// A name that a response may repeat.
std::string echo(const std::optional<std::string>& name) {
    return name && isPlainText(*name, longestEcho) ? *name : std::string();
}

} // namespace

const std::vector<Engine::Route>& Engine::families() {
    static const std::vector<Route> routes = {
        {"urlreq", &Engine::accountRequest},        {"p2pmsg", &Engine::deviceRequest},
        {"serverreq", &Engine::serverRequest},      {"preview", &Engine::previewRequest},
        {"onvifprobe", &Engine::cameraRequest},     {"ipnclatestver", &Engine::newestVersionRequest},
        {"downsdfile", &Engine::downloadRequest},   {"uploadipncfile", &Engine::uploadRequest},
        {"userupload", &Engine::userUploadRequest}, {nullptr, &Engine::unknownRequest},
    };
    return routes;
}

Engine::Handler Engine::find(const std::vector<Route>& routes, const std::string& name) {
    // The last row takes what no other one names.
    const auto found = std::find_if(routes.begin(), routes.end(),
                                    [&](const Route& route) { return route.name == nullptr || name == route.name; });
    return found->handle;
}

void Engine::accountRequest(const RequestPointer& request, const Json& message) {
    const Json* body = memberAt(message, "urlreq");
    auto operation = body != nullptr ? textAt(*body, "clienttype") : std::nullopt;
    // Signing in and moving files name the operation here.
    if (body != nullptr && !operation)
        operation = textAt(*body, "reqtype");
    const Json* params = body != nullptr ? memberAt(*body, "params") : nullptr;
    if (!operation || (params != nullptr && !params->is_object()))
        return respond(request, responseText("urlreq", request->id(), ServiceCode::BadRequest,
                                             {{"clienttype", echo(operation)}}));
    lookAround();
    if (*operation == "userdown")
        return userFiles_->download(request, params != nullptr ? *params : Json::object());
    const auto before = accounts_.session().current();
    const auto outcome = accounts_.perform(*operation, params != nullptr ? *params : Json::object());
    const auto after = accounts_.session().current();
    if (before && after && !service::isSameAccount(before, after))
        video_->closeAll(media::StreamError::NotSignedIn);
    watch_->setActive(after.has_value());
    alarms_->look();
    const auto response = [&](const Reply& reply) {
        return responseText("urlreq", request->id(), reply, {{"clienttype", echo(operation)}});
    };
    if (outcome.message)
        return sendMessage(request, *outcome.message, response(outcome.reply), response(ServiceCode::MessageFailed));
    respond(request, response(outcome.reply));
    actOn(outcome);
}

void Engine::sendMessage(const RequestPointer& request, const service::TextMessage& message,
                         const std::string& response, const std::string& refusal) {
    messages_.post([this, request, message, response, refusal] {
        const service::Outbox::Sent sent = outbox_->send(message);
        accounts_.settle(message, sent.done);
        service_.post([this, request, sent, text = sent.done ? response : refusal] {
            respond(request, text);
            if (sent.told)
                tell(*sent.told);
        });
    });
}

void Engine::deviceRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    if (DeviceFiles::isAboutFiles(message))
        return deviceFiles_->cardRequest(request, message);
    if (SensorRequests::isAboutBoards(message))
        return sensorRequests_->boardRequest(request, message);
    const auto caller = accounts_.session().current();
    auto answer = caller ? devices_.parameters(caller->id, message)
                         : device::DeviceAnswer{ServiceCode::NotSignedIn, std::nullopt};
    if (answer.task)
        return cameraControl_->perform(request, std::move(*answer.task));
    respond(request,
            responseText("p2pmsg", request->id(), answer.reply, {{"ipncid", echo(textAt(message, "ipncid"))}}));
    settleDevices();
}

void Engine::downloadRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    deviceFiles_->download(request, message);
}

void Engine::uploadRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    deviceFiles_->upload(request, message);
}

void Engine::userUploadRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    userFiles_->upload(request, message);
}

void Engine::keepUpload(const RequestPointer& request, service::Upload upload) {
    service_.post([this, request, received = std::move(upload)] {
        if (request->hasEnded())
            return;
        lookAround();
        const auto outcome = accounts_.perform(
            [&](const service::OperationContext& context) { return service::keepUpload(context, received); });
        userFiles_->finishUpload(request, outcome.reply, received.size);
        actOn(outcome);
    });
}

void Engine::newestVersionRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    const auto caller = accounts_.session().current();
    const Reply reply = caller ? devices_.newestVersion(caller->id, message) : Reply(ServiceCode::NotSignedIn);
    respond(request, responseText("ipnclatestver", request->id(), reply));
}

void Engine::serverRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    if (SensorRequests::isAboutSamples(message))
        return sensorRequests_->sampleRequest(request, message);
    const auto caller = accounts_.session().current();
    const Reply reply = caller ? devices_.serverData(caller->id, message) : Reply(ServiceCode::NotSignedIn);
    respond(request, responseText("serverreq", request->id(), reply));
}

void Engine::videoRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    if (!stopping_)
        video_->open(request, message);
}

void Engine::cameraRequest(const RequestPointer& request, const Json& message) {
    if (!accounts_.session().current())
        return respond(request, responseText("onvifprobe", request->id(), ServiceCode::NotSignedIn));
    finder_->probe(request, message);
}

void Engine::previewRequest(const RequestPointer& request, const Json& message) {
    lookAround();
    if (!stopping_)
        video_->preview(request, message);
}

void Engine::unknownRequest(const RequestPointer& request, const Json& message) {
    const std::string family = echo(textAt(message, "reqtype"));
    respond(request, responseText(family.c_str(), request->id(), ServiceCode::NotSupported));
}

} // namespace ipncsdk::api
