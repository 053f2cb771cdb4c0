#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "service/FriendRecords.h"
#include "service/Operations.h"
#include "store/Accounts.h"
#include "store/Devices.h"
#include "store/Groups.h"

#include <algorithm>
#include <array>

namespace ipncsdk::service {

namespace {

/// The account's devices with its own rights on each; those of friends name the friend.
Json deviceRights(const std::vector<store::PlacedDevice>& devices, const OperationContext& context) {
    Json list = Json::array();
    for (const store::PlacedDevice& placed : devices) {
        const store::Device& device = placed.device;
        if (device.origin == "config" && context.cameras.find(device.ipncid) == nullptr)
            continue;
        const Json authority = device::authorityOf(placed);
        Json row = {{"ipncid", device.ipncid},
                    {"name", device.name},
                    {"nickname", placed.nickname},
                    {"admin", authority["admin"]},
                    {"authority", authority}};
        if (device.owner != context.caller.id)
            row["friendphone"] = placed.ownerPhone;
        list.push_back(std::move(row));
    }
    return list;
}

/// The shares gathered under one key of theirs: [{outerKey: X, listKey: [Y...]}...], in order.
Json gathered(const std::vector<store::Share>& shares, const char* outerKey, std::string store::Share::*outer,
              const char* listKey, std::string store::Share::*inner) {
    std::map<std::string, Json> rows;
    for (const store::Share& share : shares)
        rows[share.*outer].push_back(share.*inner);
    Json list = Json::array();
    for (auto& [name, members] : rows)
        list.push_back({{outerKey, name}, {listKey, std::move(members)}});
    return list;
}

/// The "authority" that a friend gets: what `wanted` names, and of the rest what stood there before or the usual.
/// Nothing when `wanted` is not an object of known flags.
std::optional<Json> givenRights(const Json* wanted, const std::optional<std::string>& before) {
    constexpr std::array flags = {"video", "record", "ptz", "param"};
    Json rights = before ? device::authorityOfShare(*before)
                         : Json{{"admin", false}, {"video", true}, {"record", true}, {"ptz", true}, {"param", true}};
    if (wanted == nullptr)
        return rights;
    if (!wanted->is_object())
        return std::nullopt;
    for (const auto& [key, value] : wanted->items()) {
        // A share never makes an administrator; a client may send the whole object back all the same.
        if (key == "admin" && value == false)
            continue;
        if (std::find(flags.begin(), flags.end(), key) == flags.end() || !value.is_boolean())
            return std::nullopt;
        rights[key] = value;
    }
    return rights;
}

/// Brings a device's share with one friend to what is wanted, which may be what it is already.
ServiceCode applyShare(soci::session& sql, const OperationContext& context, const store::Device& device,
                       store::AccountId friendId, bool share, const Json* authority) {
    const auto before = store::shareRights(sql, device.ipncid, friendId);
    const auto rights = givenRights(authority, before);
    if (!rights)
        return ServiceCode::BadRequest;
    if (share && !before)
        store::insertShare(sql, device.ipncid, friendId, toText(*rights), store::firstGroup(sql, friendId),
                           device.name);
    else if (share && device::authorityOfShare(*before) != *rights)
        store::setShareRights(sql, device.ipncid, friendId, toText(*rights));
    else if (!share && before)
        store::removeShare(sql, device.ipncid, friendId);
    else
        return ServiceCode::Done;
    context.effects.concerned = {context.caller.id, friendId};
    return ServiceCode::Done;
}

} // namespace

Reply getAllDeviceShareList(const OperationContext& context, const Json& /*params*/) {
    std::vector<store::Friend> friends;
    std::vector<store::PlacedDevice> devices;
    std::vector<store::Share> shares;
    const ServiceCode code = context.database.read("read shares", [&](soci::session& sql) {
        friends = store::friendsOf(sql, context.caller.id);
        devices = store::devicesOf(sql, context.caller.id);
        shares = store::sharesBy(sql, context.caller.id);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    Json phones = Json::array();
    for (const store::Friend& person : friends)
        phones.push_back(person.phone);
    Json flat = Json::array();
    for (const store::Share& share : shares)
        flat.push_back({{"friendphone", share.friendPhone},
                        {"ipncid", share.ipncid},
                        {"share", true},
                        {"authority", device::authorityOfShare(share.rights)}});
    return Reply(Json{
        {"friendlist", friendList(friends)},
        {"phonelist", std::move(phones)},
        {"ipnclist", deviceRights(devices, context)},
        {"devicesharelist", std::move(flat)},
        {"friendshare",
         gathered(shares, "friendphone", &store::Share::friendPhone, "ipnclist", &store::Share::ipncid)},
        {"ipncshare", gathered(shares, "ipncid", &store::Share::ipncid, "phonelist", &store::Share::friendPhone)}});
}

Reply setFriendDeviceShare(const OperationContext& context, const Json& params) {
    const auto phone = textAt(params, "friendphone");
    const auto ipncid = textAt(params, "ipncid");
    const auto share = flagAt(params, "share");
    const Json* authority = memberAt(params, "authority");
    if (!phone || !ipncid || !share || !givenRights(authority, std::nullopt))
        return ServiceCode::BadRequest;
    return context.change("share a device", [&](soci::session& sql) {
        const auto other = store::friendOf(sql, context.caller.id, *phone);
        if (!other)
            return ServiceCode::NotFriend;
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Admin))
            return ServiceCode::NoRight;
        return applyShare(sql, context, device->device, other->id, *share, authority);
    });
}

} // namespace ipncsdk::service
