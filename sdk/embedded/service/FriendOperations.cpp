#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "service/Operations.h"
#include "store/Accounts.h"
#include "store/Devices.h"

namespace ipncsdk::service {

namespace {

Json friendRecord(const store::Friend& person) {
    return {{"friendphone", person.phone},
            {"nickname", person.nickname},
            {"phoneid", person.phone},
            {"remarkname", person.remark}};
}

Json friendList(const std::vector<store::Friend>& friends) {
    Json list = Json::array();
    for (const store::Friend& person : friends)
        list.push_back(friendRecord(person));
    return list;
}

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

} // namespace

Reply getFriends(const OperationContext& context, const Json& /*params*/) {
    Json list;
    const ServiceCode code = context.database.read("read friends", [&](soci::session& sql) {
        list = friendList(store::friendsOf(sql, context.caller.id));
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"friendlist", std::move(list)}}) : Reply(code);
}

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
        flat.push_back({{"friendphone", share.friendPhone}, {"ipncid", share.ipncid}, {"share", true}});
    return Reply(Json{
        {"friendlist", friendList(friends)},
        {"phonelist", std::move(phones)},
        {"ipnclist", deviceRights(devices, context)},
        {"devicesharelist", std::move(flat)},
        {"friendshare",
         gathered(shares, "friendphone", &store::Share::friendPhone, "ipnclist", &store::Share::ipncid)},
        {"ipncshare", gathered(shares, "ipncid", &store::Share::ipncid, "phonelist", &store::Share::friendPhone)}});
}

} // namespace ipncsdk::service
