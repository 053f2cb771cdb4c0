#include "device/DeviceWrites.h"

#include "device/CardFiles.h"
#include "store/Parameters.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ipncsdk::device {

namespace {

/// One entry of "setcmds", checked.
ServiceCode addWrite(const std::string& name, const Json& value, DeviceWrites& writes) {
    if (writes.values.size() + writes.moves.size() >= mostNames)
        return ServiceCode::BadRequest;
    if (isPtzCommand(name)) {
        auto move = readPtzCommand(name, value);
        if (!move)
            return ServiceCode::BadRequest;
        writes.moves.push_back(std::move(*move));
        return ServiceCode::Done;
    }
    if (name == "upgrade") {
        if (!value.is_object() || writes.upgrade)
            return ServiceCode::BadRequest;
        writes.upgrade = std::make_optional(value);
        return ServiceCode::Done;
    }
    const Parameter* parameter = findParameter(name);
    if (parameter == nullptr)
        return ServiceCode::NotSupported;
    auto accepted = acceptedValue(*parameter, value);
    if (!parameter->writable || !accepted)
        return ServiceCode::BadRequest;
    writes.values.push_back({parameter, std::move(*accepted)});
    return ServiceCode::Done;
}

ServiceCode addWrites(const Json& object, DeviceWrites& writes) {
    for (const auto& [name, value] : object.items()) {
        if (const ServiceCode code = addWrite(name, value, writes); code != ServiceCode::Done)
            return code;
    }
    return ServiceCode::Done;
}

/// What a factory reset leaves alone: the card's filling is no setting, nor are presets.
constexpr std::array keptByReset = {"sdused", "sdleft", "sdcard", "ptz"};

void resetParameters(soci::session& sql, const std::string& ipncid) {
    const auto stored = store::parametersOf(sql, ipncid);
    store::clearParameters(sql, ipncid);
    for (const char* name : keptByReset) {
        if (const auto found = stored.find(name); found != stored.end())
            store::setParameter(sql, ipncid, found->first, found->second);
    }
}

void formatCard(soci::session& sql, const std::string& ipncid, std::chrono::system_clock::time_point now) {
    const auto stored = store::parametersOf(sql, ipncid);
    const auto number = [&](const char* name) {
        return integerOf(storedOrDefault(*findParameter(name), stored, nullptr)).value_or(0);
    };
    const std::int64_t size = number("sdused") + number("sdleft");
    store::setParameter(sql, ipncid, "sdused", "0");
    store::setParameter(sql, ipncid, "sdleft", std::to_string(size));
    storeCard(sql, ipncid, {now, {}});
}

} // namespace

bool DeviceWrites::has(std::string_view name) const {
    return std::any_of(values.begin(), values.end(),
                       [name](const Value& write) { return name == write.parameter->name; });
}

ServiceCode readWrites(const Json& setcmds, DeviceWrites& writes) {
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

void applyWrites(soci::session& sql, const std::string& ipncid, const DeviceWrites& writes,
                 std::chrono::system_clock::time_point now) {
    if (writes.has("paradefaultcmd"))
        resetParameters(sql, ipncid);
    if (writes.has("sdformat"))
        formatCard(sql, ipncid, now);
    for (const DeviceWrites::Value& write : writes.values) {
        const Parameter& parameter = *write.parameter;
        if (parameter.kind == Parameter::Kind::Command)
            continue;
        if (parameter.kind == Parameter::Kind::Secret && write.value == secretMask)
            continue;
        store::setParameter(sql, ipncid, parameter.name, toText(write.value));
    }
}

} // namespace ipncsdk::device
