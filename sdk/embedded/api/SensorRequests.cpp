#include "api/SensorRequests.h"

#include "base/LocalTime.h"
#include "base/Log.h"
#include "base/Text.h"
#include "device/DeviceRequests.h"
#include "sensor/BoardType.h"
#include "service/BoardRecords.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace ipncsdk::api {

namespace {

constexpr std::array commands = {"sensorread", "sensorwrite", "uploadinputs"};
constexpr std::size_t mostHanded = 256;

const sensor::Port* portOf(const sensor::Board& board, int pid, bool isInput) {
    const auto& ports = isInput ? board.inputs : board.outputs;
    const auto found =
        std::find_if(ports.begin(), ports.end(), [pid](const sensor::Port& port) { return port.pid == pid; });
    return found == ports.end() ? nullptr : &*found;
}

std::optional<double> numberOf(const Json* value) {
    if (value == nullptr)
        return std::nullopt;
    double number = 0;
    if (value->is_number())
        number = value->get<double>();
    else if (value->is_boolean())
        number = value->get<bool>() ? 1 : 0;
    else if (const auto* const text = value->get_ptr<const std::string*>()) {
        const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
        if (error != std::errc() || end != text->data() + text->size())
            return std::nullopt;
    } else {
        return std::nullopt;
    }
    return std::isfinite(number) ? std::make_optional(number) : std::nullopt;
}

} // namespace

SensorRequests::SensorRequests(Parts parts)
    : parts_(parts) {}

void SensorRequests::stop() {
    devices_.finish(true);
    readers_.finish(true);
}

void SensorRequests::respond(const Pointer& request, const char* family, const Reply& reply, Json extra) {
    request->respond(responseText(family, request->id(), reply, std::move(extra)));
    parts_.requests.take(request->id());
}

bool SensorRequests::isAboutBoards(const Json& message) {
    const Json* const wishes = memberAt(message, "setcmds");
    return wishes != nullptr && wishes->is_object() &&
           std::any_of(commands.begin(), commands.end(), [&](const char* name) { return wishes->contains(name); });
}

void SensorRequests::boardRequest(const Pointer& request, const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    const Json& wishes = message["setcmds"];
    ServiceCode code = ServiceCode::Done;
    if (!parts_.session.current())
        code = ServiceCode::NotSignedIn;
    else if (!ipncid || wishes.size() != 1 || memberAt(message, "getcmds") != nullptr)
        code = ServiceCode::BadRequest;
    if (code != ServiceCode::Done)
        return respond(request, "p2pmsg", code);
    if (const Json* const wish = memberAt(wishes, "sensorread"))
        return read(request, *ipncid, *wish);
    if (const Json* const wish = memberAt(wishes, "sensorwrite"))
        return write(request, *ipncid, *wish);
    upload(request, *ipncid, wishes["uploadinputs"]);
}

ServiceCode SensorRequests::findPort(const std::string& ipncid, int pid, bool isInput, device::Right right,
                                     sensor::Board& board) const {
    const auto caller = parts_.session.current();
    return parts_.database.read("look up a board", [&](soci::session& sql) {
        const auto device = caller ? device::visibleDevice(sql, caller->id, ipncid, parts_.cameras) : std::nullopt;
        if (!device)
            return caller ? ServiceCode::UnknownDevice : ServiceCode::NotSignedIn;
        if (!device::allows(*device, right))
            return ServiceCode::NoRight;
        const service::BoardRecords records(device->device.interfaces, device->device.extend);
        for (const Json& record : records.all()) {
            board = sensor::boardOf(record);
            if (portOf(board, pid, isInput) != nullptr)
                return device::isOnline(device->device, parts_.cameras) ? ServiceCode::Done
                                                                        : ServiceCode::DeviceOffline;
        }
        return ServiceCode::UnknownInput;
    });
}

void SensorRequests::read(const Pointer& request, const std::string& ipncid, const Json& wish) {
    const int pid = sensor::wholeAt(wish, "pid", 0);
    sensor::Board board;
    const ServiceCode code =
        pid <= 0 ? ServiceCode::BadRequest : findPort(ipncid, pid, true, device::Right::Param, board);
    if (code != ServiceCode::Done)
        return respond(request, "p2pmsg", code, {{"ipncid", ipncid}});
    devices_.post([this, request, ipncid, input = *portOf(board, pid, true)] {
        const auto reading = parts_.sensors.readNow(input.pid);
        if (!reading)
            return respond(request, "p2pmsg", ServiceCode::UnknownInput, {{"ipncid", ipncid}});
        const Json read = {{"pid", input.pid},
                           {"raw", (reading->value - input.offset) / input.scale},
                           {"value", reading->value},
                           {"state", reading->normal ? 1 : 0},
                           {"time", sensor::epochText(sensor::toMilliseconds(reading->time))}};
        respond(request, "p2pmsg", Reply(Json{{"sensorread", read}}), {{"ipncid", ipncid}});
    });
}

void SensorRequests::write(const Pointer& request, const std::string& ipncid, const Json& wish) {
    const int pid = sensor::wholeAt(wish, "pid", 0);
    const auto value = numberOf(memberAt(wish, "value"));
    sensor::Board board;
    const ServiceCode code =
        pid <= 0 || !value ? ServiceCode::BadRequest : findPort(ipncid, pid, false, device::Right::Admin, board);
    if (code != ServiceCode::Done)
        return respond(request, "p2pmsg", code, {{"ipncid", ipncid}});
    devices_.post([this, request, ipncid, pid, wanted = *value] {
        const ServiceCode done = parts_.sensors.write(pid, wanted);
        const Reply reply =
            done == ServiceCode::Done ? Reply(Json{{"sensorwrite", {{"pid", pid}, {"value", wanted}}}}) : Reply(done);
        respond(request, "p2pmsg", reply, {{"ipncid", ipncid}});
    });
}

ServiceCode SensorRequests::handedValue(const std::string& ipncid, const Json& entry, Handed& handed) const {
    handed.pid = sensor::wholeAt(entry, "pid", 0);
    const auto raw = numberOf(memberAt(entry, "data"));
    if (handed.pid <= 0 || !raw)
        return ServiceCode::BadRequest;
    handed.raw = *raw;
    sensor::Board board;
    const ServiceCode code = findPort(ipncid, handed.pid, true, device::Right::Admin, board);
    return code == ServiceCode::Done && !sensor::isHandedIn(board.type) ? ServiceCode::UnknownInput : code;
}

void SensorRequests::upload(const Pointer& request, const std::string& ipncid, const Json& list) {
    std::vector<Handed> values;
    ServiceCode code =
        list.is_array() && !list.empty() && list.size() <= mostHanded ? ServiceCode::Done : ServiceCode::BadRequest;
    for (auto entry = list.begin(); code == ServiceCode::Done && entry != list.end(); ++entry)
        code = handedValue(ipncid, *entry, values.emplace_back());
    if (code != ServiceCode::Done)
        return respond(request, "p2pmsg", code, {{"ipncid", ipncid}});
    devices_.post([this, request, ipncid, values] {
        ServiceCode done = ServiceCode::Done;
        for (const Handed& value : values) {
            if (done == ServiceCode::Done)
                done = parts_.sensors.hand(value.pid, value.raw);
        }
        respond(request, "p2pmsg", done, {{"ipncid", ipncid}});
    });
}

std::map<int, std::string> SensorRequests::readableInputs(store::AccountId account) const {
    std::map<int, std::string> inputs;
    parts_.database.read("look up inputs", [&](soci::session& sql) {
        for (const store::PlacedDevice& placed : store::devicesOf(sql, account)) {
            const store::Device& device = placed.device;
            const bool hidden = device.origin == "config" && parts_.cameras.find(device.ipncid) == nullptr;
            if (hidden || !device::allows(placed, device::Right::Param))
                continue;
            service::BoardRecords(device.interfaces, device.extend)
                .forEachPort([&](const Json& port, bool /*isInput*/) {
                    inputs[sensor::wholeAt(port, "pid", 0)] = device.ipncid;
                });
        }
        return ServiceCode::Done;
    });
    inputs.erase(0);
    return inputs;
}

bool SensorRequests::isAboutSamples(const Json& message) {
    const Json* const body = memberAt(message, "serverreq");
    const auto type = body != nullptr ? textAt(*body, "type") : std::nullopt;
    return type == "sensordatareq" || type == "sensordataexport";
}

void SensorRequests::sampleRequest(const Pointer& request, const Json& message) {
    const auto caller = parts_.session.current();
    if (!caller)
        return respond(request, "serverreq", ServiceCode::NotSignedIn);
    const Json& body = message["serverreq"];
    const std::string type = *textAt(body, "type");
    const Json* const wishes = memberAt(body, type.c_str());
    auto query = wishes != nullptr ? sensor::sampleQuery(*wishes) : std::nullopt;
    if (!query)
        return respond(request, "serverreq", ServiceCode::BadRequest);
    const auto readable = readableInputs(caller->id);
    query->inputs.erase(
        std::remove_if(query->inputs.begin(), query->inputs.end(), [&](int pid) { return readable.count(pid) == 0; }),
        query->inputs.end());
    readers_.post([this, request, wanted = std::move(*query), whole = type == "sensordataexport"] {
        if (request->hasEnded())
            return;
        parts_.sensors.flush();
        try {
            whole ? exportSamples(request, wanted) : samples(request, wanted);
        } catch (const sensor::SampleError& error) {
            logLine(std::string("samples can't be read: ") + error.what());
            respond(request, "serverreq", ServiceCode::StoreError);
        }
    });
}

Json SensorRequests::updateOf(const std::vector<sensor::Reading>& changed, const Clock& clock) const {
    const auto caller = parts_.session.current();
    const auto readable = caller ? readableInputs(caller->id) : std::map<int, std::string>();
    Json list = Json::array();
    for (const sensor::Reading& reading : changed) {
        const auto device = readable.find(reading.pid);
        if (device == readable.end())
            continue;
        list.push_back({{"ipncid", device->second},
                        {"pid", reading.pid},
                        {"value", reading.value},
                        {"state", reading.normal ? 1 : 0},
                        {"time", sensor::epochText(sensor::toMilliseconds(reading.time))}});
    }
    if (list.empty())
        return nullptr;
    return {{"type", "sensordataupdate"},
            {"updatetime", localTime(clock, "%Y-%m-%d %H:%M:%S")},
            {"sensordataupdate", std::move(list)}};
}

} // namespace ipncsdk::api
