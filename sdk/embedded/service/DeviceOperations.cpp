#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Devices.h"

#include <limits>
#include <string_view>

namespace ipncsdk::service {

namespace {

/// Where a device goes in the list of a group that also holds devices which the account does not see now: behind
/// those that are shown before it.
std::size_t storedIndex(soci::session& sql, const OperationContext& context, const std::string& ipncid,
                        store::GroupId group, std::size_t shownIndex) {
    std::size_t stored = 0;
    std::size_t shown = 0;
    for (const store::PlacedDevice& placed : store::devicesOf(sql, context.caller.id)) {
        const std::string& id = placed.device.ipncid;
        if (placed.group != group || id == ipncid)
            continue;
        if (shown == shownIndex)
            break;
        ++stored;
        if (placed.device.origin != "config" || context.cameras.find(id) != nullptr)
            ++shown;
    }
    return stored;
}

/// Offsets of time zones that are in use lie from -12:00 to +14:00.
bool isTimeZone(const std::string& text) {
    constexpr int mostMinutes = 14 * 60;
    const auto digitsAt = [&text](std::size_t at) {
        const auto isDigit = [](char c) {
            return c >= '0' && c <= '9';
        };
        return isDigit(text[at]) && isDigit(text[at + 1]) ? (text[at] - '0') * 10 + text[at + 1] - '0' : -1;
    };
    if (text.size() != std::string_view("GMT+08:00").size() || text[6] != ':')
        return false;
    const std::string_view name = std::string_view(text).substr(0, 3);
    const int hours = digitsAt(4);
    const int minutes = digitsAt(7);
    return (name == "GMT" || name == "UTC") && (text[3] == '+' || text[3] == '-') && hours >= 0 && minutes >= 0 &&
           minutes < 60 && hours * 60 + minutes <= mostMinutes;
}

} // namespace

Reply setIpncAdminParam(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const auto timezone = textAt(params, "timezone");
    if (!ipncid || !timezone || !isTimeZone(*timezone))
        return ServiceCode::BadRequest;
    return context.change("set a device's time zone", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Admin))
            return ServiceCode::NoRight;
        Json info = Json::parse(device->device.info, nullptr, false);
        if (!info.is_object())
            info = Json::object();
        info["timezone"] = *timezone;
        store::setDeviceInfo(sql, *ipncid, toText(info));
        context.effects.concerned.insert(context.caller.id);
        for (const store::AccountId account : store::friendsWith(sql, *ipncid))
            context.effects.concerned.insert(account);
        return ServiceCode::Done;
    });
}

Reply setIpncParam(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const bool hasNickname = memberAt(params, "nickname") != nullptr;
    const bool hasGroupId = memberAt(params, "groupid") != nullptr;
    const auto nickname = nameAt(params, "nickname");
    const auto group = groupIdAt(params, "groupid");
    if (!ipncid || (!hasNickname && !hasGroupId) || (hasNickname && !nickname) || (hasGroupId && !group))
        return ServiceCode::BadRequest;
    return context.change("set a device's place", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (group && !store::hasGroup(sql, context.caller.id, *group))
            return ServiceCode::UnknownGroup;
        if (nickname)
            store::setDeviceNickname(sql, context.caller.id, *ipncid, *nickname);
        if (group && *group != device->group)
            store::moveDevice(sql, context.caller.id, *ipncid, *group, std::numeric_limits<std::size_t>::max());
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

Reply moveDeviceIndex(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const auto group = groupIdAt(params, "groupid");
    const auto index = indexAt(params, "index");
    if (!ipncid || !group || !index)
        return ServiceCode::BadRequest;
    return context.change("move a device", [&](soci::session& sql) {
        if (!device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras))
            return ServiceCode::UnknownDevice;
        if (!store::hasGroup(sql, context.caller.id, *group))
            return ServiceCode::UnknownGroup;
        store::moveDevice(sql, context.caller.id, *ipncid, *group,
                          storedIndex(sql, context, *ipncid, *group, *index));
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
