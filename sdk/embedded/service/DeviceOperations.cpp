#include "device/DeviceRequests.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Devices.h"

#include <algorithm>
#include <limits>

namespace ipncsdk::service {

namespace {

bool hasGroup(soci::session& sql, store::AccountId account, store::GroupId id) {
    const auto groups = store::groupsOf(sql, account);
    return std::any_of(groups.begin(), groups.end(), [id](const store::Group& group) { return group.id == id; });
}

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

} // namespace

Reply setIpncParam(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const bool hasNickname = memberAt(params, "nickname") != nullptr;
    const bool hasGroupId = memberAt(params, "groupid") != nullptr;
    const auto nickname = nameAt(params, "nickname");
    const auto group = groupIdAt(params, "groupid");
    if (!ipncid || (!hasNickname && !hasGroupId) || (hasNickname && !nickname) || (hasGroupId && !group))
        return ServiceCode::BadRequest;
    return context.database.change("set a device's place", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (group && !hasGroup(sql, context.caller.id, *group))
            return ServiceCode::UnknownGroup;
        if (nickname)
            store::setDeviceNickname(sql, context.caller.id, *ipncid, *nickname);
        if (group && *group != device->group)
            store::moveDevice(sql, context.caller.id, *ipncid, *group, std::numeric_limits<std::size_t>::max());
        return ServiceCode::Done;
    });
}

Reply moveDeviceIndex(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const auto group = groupIdAt(params, "groupid");
    const auto index = indexAt(params, "index");
    if (!ipncid || !group || !index)
        return ServiceCode::BadRequest;
    return context.database.change("move a device", [&](soci::session& sql) {
        if (!device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras))
            return ServiceCode::UnknownDevice;
        if (!hasGroup(sql, context.caller.id, *group))
            return ServiceCode::UnknownGroup;
        store::moveDevice(sql, context.caller.id, *ipncid, *group,
                          storedIndex(sql, context, *ipncid, *group, *index));
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
