#include "store/Devices.h"

#include <soci/soci.h>

#include <algorithm>

namespace ipncsdk::store {

namespace {

constexpr auto selectPlaced =
    "select d.ipncid, d.ownerid, d.origin, d.name, d.type, d.online, d.scene, d.phase, d.configgroup, d.info,"
    " d.interfaces, d.extend, d.video, p.groupid, p.nickname, coalesce(s.rights, ''), a.phone"
    " from placements p"
    " join devices d on d.ipncid = p.ipncid"
    " join devicegroups g on g.id = p.groupid"
    " join accounts a on a.id = d.ownerid"
    " left join shares s on s.ipncid = d.ipncid and s.friendid = p.accountid"
    " where p.accountid = :account and (:device = '' or d.ipncid = :device)"
    " and (d.ownerid = p.accountid or s.rights is not null)"
    " order by g.position, g.id, p.position, d.ipncid";

std::vector<PlacedDevice> placedDevices(soci::session& sql, AccountId account, const std::string& onlyDevice) {
    PlacedDevice row;
    Device& device = row.device;
    long long online = 0;
    soci::statement statement =
        (sql.prepare << selectPlaced, soci::into(device.ipncid), soci::into(device.owner), soci::into(device.origin),
         soci::into(device.name), soci::into(device.type), soci::into(online), soci::into(device.scene),
         soci::into(device.phase), soci::into(device.configGroup), soci::into(device.info),
         soci::into(device.interfaces), soci::into(device.extend), soci::into(device.video), soci::into(row.group),
         soci::into(row.nickname), soci::into(row.rights), soci::into(row.ownerPhone), soci::use(account, "account"),
         soci::use(onlyDevice, "device"));
    statement.execute();
    std::vector<PlacedDevice> devices;
    while (statement.fetch()) {
        device.online = online != 0;
        devices.push_back(row);
    }
    return devices;
}

void place(soci::session& sql, AccountId account, const std::string& ipncid, GroupId group,
           const std::string& nickname) {
    long long position = 0;
    sql << "select coalesce(max(position), -1) + 1 from placements where accountid = :account and groupid = :group",
        soci::into(position), soci::use(account, "account"), soci::use(group, "group");
    sql << "insert into placements (accountid, ipncid, groupid, position, nickname)"
           " values (:account, :device, :group, :position, :nickname)",
        soci::use(account, "account"), soci::use(ipncid, "device"), soci::use(group, "group"),
        soci::use(position, "position"), soci::use(nickname, "nickname");
}

std::vector<std::string> membersInOrder(soci::session& sql, AccountId account, GroupId group) {
    std::string row;
    soci::statement statement = (sql.prepare << "select ipncid from placements where accountid = :account"
                                                " and groupid = :group order by position, ipncid",
                                 soci::into(row), soci::use(account, "account"), soci::use(group, "group"));
    statement.execute();
    std::vector<std::string> members;
    while (statement.fetch())
        members.push_back(row);
    return members;
}

} // namespace

std::vector<PlacedDevice> devicesOf(soci::session& sql, AccountId account) {
    return placedDevices(sql, account, {});
}

std::optional<PlacedDevice> deviceOf(soci::session& sql, AccountId account, const std::string& ipncid) {
    if (ipncid.empty())
        return std::nullopt;
    auto devices = placedDevices(sql, account, ipncid);
    return devices.empty() ? std::nullopt : std::make_optional(std::move(devices.front()));
}

std::optional<Device> deviceById(soci::session& sql, const std::string& ipncid) {
    Device device;
    long long online = 0;
    sql << "select ipncid, ownerid, origin, name, type, online, scene, phase, configgroup, info, interfaces, extend,"
           " video from devices where ipncid = :device",
        soci::into(device.ipncid), soci::into(device.owner), soci::into(device.origin), soci::into(device.name),
        soci::into(device.type), soci::into(online), soci::into(device.scene), soci::into(device.phase),
        soci::into(device.configGroup), soci::into(device.info), soci::into(device.interfaces),
        soci::into(device.extend), soci::into(device.video), soci::use(ipncid, "device");
    device.online = online != 0;
    return sql.got_data() ? std::make_optional(device) : std::nullopt;
}

void insertDevice(soci::session& sql, const Device& device, GroupId group, const std::string& nickname) {
    const long long online = device.online ? 1 : 0;
    sql << "insert into devices (ipncid, ownerid, origin, name, type, online, scene, phase, configgroup, info,"
           " interfaces, extend, video) values (:device, :owner, :origin, :name, :type, :online, :scene, :phase,"
           " :configgroup, :info, :interfaces, :extend, :video)",
        soci::use(device.ipncid, "device"), soci::use(device.owner, "owner"), soci::use(device.origin, "origin"),
        soci::use(device.name, "name"), soci::use(device.type, "type"), soci::use(online, "online"),
        soci::use(device.scene, "scene"), soci::use(device.phase, "phase"),
        soci::use(device.configGroup, "configgroup"), soci::use(device.info, "info"),
        soci::use(device.interfaces, "interfaces"), soci::use(device.extend, "extend"),
        soci::use(device.video, "video");
    place(sql, device.owner, device.ipncid, group, nickname);
}

void updateConfigured(soci::session& sql, const Device& device) {
    sql << "update devices set name = :name, configgroup = :configgroup where ipncid = :device",
        soci::use(device.name, "name"), soci::use(device.configGroup, "configgroup"),
        soci::use(device.ipncid, "device");
}

void insertShare(soci::session& sql, const std::string& ipncid, AccountId friendId, const std::string& rights,
                 GroupId groupOfFriend, const std::string& nickname) {
    sql << "insert into shares (ipncid, friendid, rights) values (:device, :friend, :rights)",
        soci::use(ipncid, "device"), soci::use(friendId, "friend"), soci::use(rights, "rights");
    place(sql, friendId, ipncid, groupOfFriend, nickname);
}

void setShareRights(soci::session& sql, const std::string& ipncid, AccountId friendId, const std::string& rights) {
    sql << "update shares set rights = :rights where ipncid = :device and friendid = :friend",
        soci::use(rights, "rights"), soci::use(ipncid, "device"), soci::use(friendId, "friend");
}

std::optional<std::string> shareRights(soci::session& sql, const std::string& ipncid, AccountId friendId) {
    std::string rights;
    sql << "select rights from shares where ipncid = :device and friendid = :friend", soci::into(rights),
        soci::use(ipncid, "device"), soci::use(friendId, "friend");
    return sql.got_data() ? std::make_optional(rights) : std::nullopt;
}

void removeShare(soci::session& sql, const std::string& ipncid, AccountId friendId) {
    sql << "delete from shares where ipncid = :device and friendid = :friend", soci::use(ipncid, "device"),
        soci::use(friendId, "friend");
    sql << "delete from placements where ipncid = :device and accountid = :friend", soci::use(ipncid, "device"),
        soci::use(friendId, "friend");
}

void removeSharesOf(soci::session& sql, AccountId owner, AccountId friendId) {
    sql << "delete from placements where accountid = :friend and ipncid in"
           " (select ipncid from devices where ownerid = :owner)",
        soci::use(friendId, "friend"), soci::use(owner, "owner");
    sql << "delete from shares where friendid = :friend and ipncid in"
           " (select ipncid from devices where ownerid = :owner)",
        soci::use(friendId, "friend"), soci::use(owner, "owner");
}

std::vector<AccountId> friendsWith(soci::session& sql, const std::string& ipncid) {
    AccountId row = 0;
    soci::statement statement = (sql.prepare << "select friendid from shares where ipncid = :device", soci::into(row),
                                 soci::use(ipncid, "device"));
    statement.execute();
    std::vector<AccountId> accounts;
    while (statement.fetch())
        accounts.push_back(row);
    return accounts;
}

std::vector<Share> sharesBy(soci::session& sql, AccountId owner) {
    Share row;
    soci::statement statement =
        (sql.prepare << "select s.ipncid, a.phone, s.rights from shares s join devices d on d.ipncid = s.ipncid"
                        " join accounts a on a.id = s.friendid where d.ownerid = :owner order by s.ipncid, a.phone",
         soci::into(row.ipncid), soci::into(row.friendPhone), soci::into(row.rights), soci::use(owner, "owner"));
    statement.execute();
    std::vector<Share> shares;
    while (statement.fetch())
        shares.push_back(row);
    return shares;
}

void setDeviceInfo(soci::session& sql, const std::string& ipncid, const std::string& info) {
    sql << "update devices set info = :info where ipncid = :device", soci::use(info, "info"),
        soci::use(ipncid, "device");
}

void removeDevice(soci::session& sql, const std::string& ipncid) {
    for (const char* statement :
         {"delete from mapmarkers where ipncid = :device", "delete from placements where ipncid = :device",
          "delete from shares where ipncid = :device", "delete from parameters where ipncid = :device",
          "delete from linkplans where ipncid = :device", "delete from netcameras where ipncid = :device",
          "delete from devices where ipncid = :device"})
        sql << statement, soci::use(ipncid, "device");
}

void setDeviceNickname(soci::session& sql, AccountId account, const std::string& ipncid,
                       const std::string& nickname) {
    sql << "update placements set nickname = :nickname where accountid = :account and ipncid = :device",
        soci::use(nickname, "nickname"), soci::use(account, "account"), soci::use(ipncid, "device");
}

void moveDevice(soci::session& sql, AccountId account, const std::string& ipncid, GroupId group, std::size_t index) {
    auto members = membersInOrder(sql, account, group);
    members.erase(std::remove(members.begin(), members.end(), ipncid), members.end());
    members.insert(members.begin() + static_cast<std::ptrdiff_t>(std::min(index, members.size())), ipncid);
    long long position = 0;
    for (const std::string& member : members) {
        sql << "update placements set groupid = :group, position = :position"
               " where accountid = :account and ipncid = :device",
            soci::use(group, "group"), soci::use(position, "position"), soci::use(account, "account"),
            soci::use(member, "device");
        ++position;
    }
}

} // namespace ipncsdk::store
