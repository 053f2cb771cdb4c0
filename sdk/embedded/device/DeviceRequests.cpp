#include "device/DeviceRequests.h"

#include "device/ParameterTable.h"
#include "device/Rights.h"
#include "store/Parameters.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace ipncsdk::device {

namespace {

constexpr std::size_t mostNames = 200;
constexpr std::size_t mostInputs = 2000;

struct Write {
    const Parameter* parameter;
    Json value; ///< as the store keeps it
};

/// One entry of "setcmds", checked.
ServiceCode addWrite(const std::string& name, const Json& value, std::vector<Write>& writes) {
    const Parameter* parameter = findParameter(name);
    if (parameter == nullptr)
        return ServiceCode::NotSupported;
    auto accepted = acceptedValue(*parameter, value);
    if (!parameter->writable || !accepted || writes.size() >= mostNames)
        return ServiceCode::BadRequest;
    writes.push_back({parameter, std::move(*accepted)});
    return ServiceCode::Done;
}

ServiceCode addWrites(const Json& object, std::vector<Write>& writes) {
    for (const auto& [name, value] : object.items()) {
        if (const ServiceCode code = addWrite(name, value, writes); code != ServiceCode::Done)
            return code;
    }
    return ServiceCode::Done;
}

/// "setcmds" is an object of names and values, or a list of such objects and of bare command names.
ServiceCode readWrites(const Json& setcmds, std::vector<Write>& writes) {
    if (setcmds.is_object())
        return addWrites(setcmds, writes);
    if (!setcmds.is_array())
        return ServiceCode::BadRequest;
    for (const Json& entry : setcmds) {
        ServiceCode code = ServiceCode::BadRequest;
        if (entry.is_object())
            code = addWrites(entry, writes);
        else if (entry.is_string())
            code = addWrite(entry.get<std::string>(), nullptr, writes);
        if (code != ServiceCode::Done)
            return code;
    }
    return ServiceCode::Done;
}

Json storedOrDefault(const Parameter& parameter, const std::map<std::string, std::string>& stored, const Json& info) {
    if (const auto found = stored.find(parameter.name); found != stored.end()) {
        Json value = Json::parse(found->second, nullptr, false);
        if (acceptedValue(parameter, value))
            return value;
    }
    // Versions are facts of the device, told in its information.
    if (const auto told = textAt(info, parameter.name))
        return *told;
    return defaultValue(parameter);
}

Json readValue(const std::string& name, const std::map<std::string, std::string>& stored, const Json& info) {
    const Parameter* parameter = findParameter(name);
    if (parameter == nullptr || parameter->kind == Parameter::Kind::Command)
        return nullptr;
    Json value = storedOrDefault(*parameter, stored, info);
    if (parameter->kind == Parameter::Kind::Secret && value.is_string() && !value.get<std::string>().empty())
        return secretMask;
    return value;
}

/// What a factory reset leaves alone: the card's filling is no setting.
constexpr std::array keptByReset = {"sdused", "sdleft"};

void resetParameters(soci::session& sql, const std::string& ipncid) {
    const auto stored = store::parametersOf(sql, ipncid);
    store::clearParameters(sql, ipncid);
    for (const char* name : keptByReset) {
        if (const auto found = stored.find(name); found != stored.end())
            store::setParameter(sql, ipncid, found->first, found->second);
    }
}

void formatCard(soci::session& sql, const std::string& ipncid) {
    const auto stored = store::parametersOf(sql, ipncid);
    const auto number = [&](const char* name) {
        return integerOf(storedOrDefault(*findParameter(name), stored, nullptr)).value_or(0);
    };
    const std::int64_t size = number("sdused") + number("sdleft");
    store::setParameter(sql, ipncid, "sdused", "0");
    store::setParameter(sql, ipncid, "sdleft", std::to_string(size));
}

/// A reset comes before the values that are written along with it.
void applyWrites(soci::session& sql, const std::string& ipncid, const std::vector<Write>& writes) {
    const auto has = [&](std::string_view name) {
        return std::any_of(writes.begin(), writes.end(),
                           [name](const Write& write) { return name == write.parameter->name; });
    };
    if (has("paradefaultcmd"))
        resetParameters(sql, ipncid);
    if (has("sdformat"))
        formatCard(sql, ipncid);
    for (const Write& write : writes) {
        const Parameter& parameter = *write.parameter;
        if (parameter.kind == Parameter::Kind::Command)
            continue;
        if (parameter.kind == Parameter::Kind::Secret && write.value == secretMask)
            continue;
        store::setParameter(sql, ipncid, parameter.name, toText(write.value));
    }
}

bool isNameList(const Json& names) {
    return names.is_array() && names.size() <= mostNames &&
           std::all_of(names.begin(), names.end(), [](const Json& name) { return name.is_string(); });
}

} // namespace

bool isOnline(const store::Device& device, const NetworkCameras& cameras) {
    return device.online && cameras.isReachable(device.ipncid);
}

std::optional<store::PlacedDevice> visibleDevice(soci::session& sql, store::AccountId account,
                                                 const std::string& ipncid, const NetworkCameras& cameras) {
    auto device = store::deviceOf(sql, account, ipncid);
    if (device && device->device.origin == "config" && cameras.find(ipncid) == nullptr)
        return std::nullopt;
    return device;
}

DeviceRequests::DeviceRequests(store::Database& database, const NetworkCameras& cameras)
    : database_(database)
    , cameras_(cameras) {}

Reply DeviceRequests::parameters(store::AccountId account, const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    const Json* names = memberAt(message, "getcmds");
    const Json* values = memberAt(message, "setcmds");
    if (!ipncid || (names == nullptr && values == nullptr) || (names != nullptr && !isNameList(*names)))
        return ServiceCode::BadRequest;
    std::vector<Write> writes;
    if (values != nullptr) {
        if (const ServiceCode code = readWrites(*values, writes); code != ServiceCode::Done)
            return code;
    }
    Json content = Json::object();
    const auto work = [&](soci::session& sql) {
        const auto device = visibleDevice(sql, account, *ipncid, cameras_);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!allows(*device, values != nullptr ? Right::Admin : Right::Param))
            return ServiceCode::NoRight;
        if (!isOnline(device->device, cameras_))
            return ServiceCode::DeviceOffline;
        if (values != nullptr)
            applyWrites(sql, *ipncid, writes);
        if (names != nullptr) {
            const auto stored = store::parametersOf(sql, *ipncid);
            const Json info = Json::parse(device->device.info, nullptr, false);
            Json& read = content["getcmds"] = Json::object();
            for (const Json& name : *names)
                read[name.get<std::string>()] = readValue(name.get<std::string>(), stored, info);
        }
        return ServiceCode::Done;
    };
    const ServiceCode code = values != nullptr ? database_.change("write device parameters", work)
                                               : database_.read("read device parameters", work);
    return code == ServiceCode::Done ? Reply(std::move(content)) : Reply(code);
}

Reply DeviceRequests::serverData(store::AccountId account, const Json& message) {
    const Json* request = memberAt(message, "serverreq");
    const auto type = request != nullptr ? textAt(*request, "type") : std::nullopt;
    if (!type)
        return ServiceCode::BadRequest;
    if (*type == "ipncstate")
        return stateOf(account, message);
    if (*type == "sensordatareq")
        return sensorData(message);
    return ServiceCode::NotSupported;
}

Reply DeviceRequests::stateOf(store::AccountId account, const Json& message) {
    // The id stands in the inner object of this request, beside "type", or in the envelope.
    const Json& request = message["serverreq"];
    const Json* inner = memberAt(request, "ipncstate");
    auto ipncid = inner != nullptr ? textAt(*inner, "ipncid") : std::nullopt;
    for (const Json* place : {&request, &message}) {
        if (!ipncid)
            ipncid = textAt(*place, "ipncid");
    }
    if (!ipncid)
        return ServiceCode::BadRequest;
    bool online = false;
    const ServiceCode code = database_.read("read a device's state", [&](soci::session& sql) {
        const auto device = visibleDevice(sql, account, *ipncid, cameras_);
        if (!device)
            return ServiceCode::UnknownDevice;
        online = isOnline(device->device, cameras_);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    return Reply(Json{{"ipncid", *ipncid}, {"online", online}});
}

Reply DeviceRequests::sensorData(const Json& message) {
    const Json* request = memberAt(message["serverreq"], "sensordatareq");
    const Json* inputs = request != nullptr ? memberAt(*request, "inputid") : nullptr;
    if (inputs == nullptr || !inputs->is_array() || inputs->size() > mostInputs)
        return ServiceCode::BadRequest;
    // No samples are stored yet: every input that is asked for has none.
    Json samples = Json::object();
    for (const Json& input : *inputs) {
        const auto pid = integerOf(input);
        if (!pid)
            return ServiceCode::BadRequest;
        samples[std::to_string(*pid)] = {{"datas", Json::array()}};
    }
    return Reply(Json{{"sensordataresp", std::move(samples)}});
}

} // namespace ipncsdk::device
