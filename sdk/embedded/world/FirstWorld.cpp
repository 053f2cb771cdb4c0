#include "world/FirstWorld.h"

#include "base/JsonText.h"
#include "store/Accounts.h"
#include "store/AddableDevices.h"
#include "store/Devices.h"
#include "store/Groups.h"
#include "world/LinkageWorld.h"
#include "world/MapWorld.h"
#include "world/MeasuringWorld.h"
#include "world/WorldCamera.h"
#include "world/WorldTables.h"

#include <soci/soci.h>

#include <array>
#include <string_view>

namespace ipncsdk::world {

namespace {

constexpr store::AccountId ownerId = 1;
constexpr store::AccountId giverId = 2;
constexpr store::AccountId colleagueId = 3;
constexpr store::AccountId guardId = 4;

struct Person {
    store::AccountId id;
    const char* phone;
    const char* nickname;
    const char* remarkOfOwner; ///< what the first account calls this friend
};

constexpr std::array friends = {
    Person{giverId, "13900139000", "河道管理所", "河道所老周"},
    Person{colleagueId, "13700137000", "李工", "设备科李工"},
    Person{guardId, "13600136000", "值班室", "夜班值班"},
};

/// What the first account shares out: a camera's name, and to whom.
struct OwnShare {
    const char* camera;
    store::AccountId friendId;
};

constexpr std::array ownShares = {
    OwnShare{"东大门入口", guardId}, OwnShare{"西大门入口", guardId},   OwnShare{"停车场出口", guardId},
    OwnShare{"一号泵组", giverId},   OwnShare{"一号泵组", colleagueId}, OwnShare{"配电间", colleagueId},
};

constexpr auto rightsOfFriends = R"({"admin":false,"video":true,"record":true,"ptz":false,"param":true})";
constexpr auto groupOfGiven = "好友分享";
constexpr auto groupOfFriends = "我的设备";

void insertPeople(soci::session& sql, const std::string& passwordHash) {
    store::insertAccount(sql, {ownerId, firstPhone, "园区监控中心", passwordHash});
    for (const Person& person : friends) {
        store::insertAccount(sql, {person.id, person.phone, person.nickname, passwordHash});
        store::insertFriendship(sql, ownerId, person.remarkOfOwner, person.id, "园区监控中心");
    }
}

using GroupsOfFriends = std::array<store::GroupId, friends.size()>;

/// Inserts one of the first account's groups with its cameras and what it shares of them; `number` counts the
/// cameras.
void insertOwnGroup(soci::session& sql, const GroupPlan& plan, bool online, const GroupsOfFriends& groupsOfFriends,
                    int& number) {
    const store::GroupId group = store::insertGroup(sql, ownerId, plan.name);
    for (const char* name : plan.cameras) {
        ++number;
        store::Device device = cameraDevice(cameraId(number), name, ownerId, number);
        device.online = online;
        const auto isThis = [name](std::string_view other) {
            return other == name;
        };
        for (const BoardPlan& board : boards()) {
            if (isThis(board.camera)) {
                device.interfaces = toText(board.interfaces);
                device.extend = toText(board.extend);
            }
        }
        insertCamera(sql, device, group);
        for (const OwnShare& share : ownShares) {
            if (isThis(share.camera))
                store::insertShare(sql, device.ipncid, share.friendId, rightsOfFriends,
                                   groupsOfFriends[static_cast<std::size_t>(share.friendId - giverId)], name);
        }
    }
}

void insertGivenCameras(soci::session& sql, store::GroupId groupOfGiver) {
    const store::GroupId group = store::insertGroup(sql, ownerId, groupOfGiven);
    int number = 100;
    for (const GivenCamera& given : givenCameras()) {
        ++number;
        insertCamera(sql, cameraDevice(given.ipncid, given.name, giverId, number), groupOfGiver);
        store::insertShare(sql, given.ipncid, ownerId, given.rights, group, given.name);
    }
    // One that the friend keeps to itself.
    insertCamera(sql, cameraDevice("FRD0005", "管理所院内", giverId, number + 1), groupOfGiver);
}

} // namespace

void fillFirstWorld(soci::session& sql, const std::function<std::string(const std::string&)>& hashPassword,
                    const store::ContentFiles& contents) {
    insertPeople(sql, hashPassword(firstPassword));
    GroupsOfFriends groupsOfFriends{};
    for (std::size_t i = 0; i < friends.size(); ++i)
        groupsOfFriends[i] = store::insertGroup(sql, friends[i].id, groupOfFriends);
    int number = 0;
    for (const GroupPlan& plan : ownGroups())
        insertOwnGroup(sql, plan, true, groupsOfFriends, number);
    insertGivenCameras(sql, groupsOfFriends[0]);
    insertOwnGroup(sql, groupOfOffline(), false, groupsOfFriends, number);
    fillMeasuring(sql, ownerId, number);
    fillLinkages(sql, ownerId);
    fillMaps(sql, ownerId, giverId, contents);
    fillWaiting(sql);
}

void fillWaiting(soci::session& sql) {
    int number = 0;
    for (const WaitingCamera& camera : waitingCameras()) {
        ++number;
        if (store::isIdTaken(sql, camera.ipncid))
            continue;
        store::insertWaiting(sql, cameraDevice(camera.ipncid, camera.name, 0, 150 + number));
        store::setDeviceWord(sql, camera.ipncid, camera.word);
    }
}

} // namespace ipncsdk::world
