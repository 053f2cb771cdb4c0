#include "world/MapWorld.h"

#include "base/JsonText.h"
#include "base/Log.h"
#include "pictures/Pictures.h"
#include "store/ContentHash.h"
#include "store/Devices.h"
#include "store/Maps.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::world {

namespace {

constexpr double pictureWidth = 1920; ///< of all plans, pixels
constexpr double pictureHeight = 1080;

struct MarkerPlan {
    const char* camera; ///< the device's name
    int pid;            ///< a board of the world's tables; 0: the camera itself
    const char* name;
    double first;  ///< pixels from the left, or degrees of latitude
    double second; ///< pixels from the top, or degrees of longitude
    const char* icon;
    std::vector<int> inputs = {}; ///< shown beside the marker
};

struct MapPlan {
    const char* name;
    const char* picture; ///< null: the map of the world
    const char* width;   ///< metres
    const char* height;
    std::vector<MarkerPlan> markers;
};

const std::vector<MapPlan>& ownMaps() {
    static const std::vector<MapPlan> maps = {
        {"水泵站平面图",
         "pump-station.png",
         "96",
         "54",
         {{"一号泵组", 101, "一号泵组", 620, 375, "pump.png", {1001, 1002, 1003}},
          {"二号泵组", 131, "二号泵组", 830, 375, "pump.png", {1031, 1033, 1034}},
          {"三号泵组", 141, "三号泵组", 1040, 375, "pump.png", {1041, 1042}},
          {"一号泵组", 0, "一号泵组摄像机", 510, 210, "camera.png"},
          {"三号泵组", 0, "三号泵组摄像机", 1150, 210, "camera.png"},
          {"进水口", 161, "进水仪表", 320, 460, "level.png", {1061, 1062}},
          {"进水口", 0, "进水口摄像机", 220, 200, "camera.png"},
          {"出水口", 171, "出水仪表", 1450, 300, "flow.png", {1071, 1072}},
          {"加药间", 151, "水质仪", 1300, 485, "water-quality.png", {1051, 1052}},
          {"加药间", 0, "加药间摄像机", 1700, 440, "dome-camera.png"},
          {"蓄水池", 111, "液位计", 660, 750, "level.png", {1011, 1012}},
          {"蓄水池", 112, "池壁渗漏", 240, 890, "water-leak.png", {1013}},
          {"蓄水池", 0, "蓄水池摄像机", 220, 700, "ptz-camera.png"},
          {"泵站控制室", 0, "控制室摄像机", 1180, 700, "dome-camera.png"},
          {"泵站控制室", 261, "巡检定位", 1180, 610, "position.png", {1161, 1162}},
          {"泵站大门", 0, "泵站大门摄像机", 1505, 880, "camera.png"}}},
        {"园区总平面图",
         "park.png",
         "640",
         "360",
         {{"东大门入口", 0, "东大门入口", 1800, 600, "camera.png"},
          {"西大门入口", 0, "西大门入口", 120, 600, "camera.png"},
          {"门卫室", 0, "门卫室", 185, 700, "dome-camera.png"},
          {"装配一线", 0, "装配一线", 220, 200, "camera.png"},
          {"喷涂车间", 221, "喷涂车间气体", 640, 380, "gas.png", {1121, 1122}},
          {"配电间", 181, "电力仪表", 780, 200, "electricity.png", {1081, 1082, 1083}},
          {"原料库一区", 201, "原料库温湿度", 1150, 210, "humidity.png", {1101, 1102}},
          {"成品库一区", 211, "成品库温湿度", 1400, 380, "humidity.png", {1111, 1112}},
          {"危化品库", 121, "危化品库气体", 1725, 380, "gas.png", {1021, 1022, 1023}},
          {"危化品库", 0, "危化品库摄像机", 1660, 170, "camera.png"},
          {"机房", 191, "机房温湿度", 520, 740, "temperature.png", {1091, 1092}},
          {"消防控制室", 251, "消防水压", 780, 900, "pressure.png", {1151}},
          {"蓄水池", 111, "蓄水池液位", 1225, 890, "level.png", {1011}},
          {"充电桩区", 241, "充电桩电表", 1740, 730, "electricity.png", {1141}},
          {"停车场出口", 0, "停车场出口", 1500, 920, "camera.png"}}},
        {"世界地图",
         nullptr,
         "",
         "",
         {{"东大门入口", 0, "北京 东大门", 39.9042, 116.4074, "camera.png"},
          {"大门广场全景", 0, "上海 大门广场", 31.2304, 121.4737, "ptz-camera.png"},
          {"装配二线", 0, "广州 装配二线", 23.1291, 113.2644, "camera.png"},
          {"一号泵组", 101, "武汉 一号泵组", 30.5928, 114.3055, "pump.png", {1001, 1002}},
          {"蓄水池", 111, "成都 蓄水池", 30.5728, 104.0668, "level.png", {1011}},
          {"危化品库", 121, "乌鲁木齐 危化品库", 43.8256, 87.6168, "gas.png", {1021, 1022}},
          {"机房", 191, "哈尔滨 机房", 45.8038, 126.5349, "temperature.png", {1091, 1092}},
          {"会议室外", 0, "新加坡 会议室", 1.3521, 103.8198, "dome-camera.png"},
          {"一层前台", 0, "柏林 前台", 52.52, 13.405, "dome-camera.png"},
          {"地面停车A区", 0, "悉尼 停车A区", -33.8688, 151.2093, "vehicle.png"},
          {"装卸月台一", 0, "圣保罗 装卸月台", -23.5505, -46.6333, "camera.png"}}},
    };
    return maps;
}

const MapPlan& givenMap() {
    static const MapPlan map = {"河道巡查图",
                                "river.png",
                                "1920",
                                "1080",
                                {{"河道闸口", 0, "闸口", 950, 500, "ptz-camera.png"},
                                 {"上游水位尺", 0, "上游水位尺", 330, 420, "camera.png"},
                                 {"巡堤路口", 0, "巡堤路口", 440, 660, "camera.png"},
                                 {"值守房", 0, "值守房", 1375, 800, "dome-camera.png"}}};
    return map;
}

/// The picture's content, kept; its name is empty when it could not be.
store::Map mapFor(const MapPlan& plan, store::AccountId owner, const store::ContentFiles& contents) {
    store::Map map;
    map.owner = owner;
    Json document = {{"name", plan.name}};
    if (plan.picture != nullptr) {
        map.local = true;
        document["range"] = {{"distance", {{"w", plan.width}, {"h", plan.height}}}};
        for (const pictures::EmbeddedPicture& picture : pictures::plans()) {
            if (std::string_view(picture.name) != plan.picture)
                continue;
            const std::string content = store::ContentHash::of(picture.bytes) + ".png";
            map.size = static_cast<long long>(picture.bytes.size());
            if (contents.write(picture.bytes, content))
                map.content = content;
        }
    }
    map.document = toText(document);
    return map;
}

Json markerDocument(const MarkerPlan& plan, bool local) {
    const std::string icon = plan.icon;
    Json document = {{"name", plan.name},  {"icon", icon},         {"iconname", icon},
                     {"iconpublic", true}, {"showmode", "always"}, {"showdatas", !plan.inputs.empty()},
                     {"isupdate", true}};
    if (!plan.inputs.empty())
        document["inputs"] = plan.inputs;
    if (local) {
        document["point"] = {{"x", toText(Json(plan.first / pictureWidth))},
                             {"y", toText(Json(plan.second / pictureHeight))}};
    } else {
        document["lat"] = plan.first;
        document["lng"] = plan.second;
    }
    return document;
}

/// Returns the map's id; 0 when it was left out.
long long fillMap(soci::session& sql, const MapPlan& plan, store::AccountId owner,
                  const store::ContentFiles& contents) {
    const store::Map map = mapFor(plan, owner, contents);
    if (map.local && map.content.empty()) {
        logLine("a map of the first start is left out: its picture can't be kept");
        return 0;
    }
    const long long id = store::insertMap(sql, map);
    const auto devices = store::devicesOf(sql, owner);
    for (const MarkerPlan& marker : plan.markers) {
        const auto found = std::find_if(devices.begin(), devices.end(), [&](const store::PlacedDevice& placed) {
            return placed.device.name == marker.camera && placed.device.owner == owner;
        });
        if (found != devices.end())
            store::insertMarker(sql,
                                {0, id, found->device.ipncid, marker.pid, toText(markerDocument(marker, map.local))});
    }
    return id;
}

} // namespace

void fillMaps(soci::session& sql, store::AccountId owner, store::AccountId giver,
              const store::ContentFiles& contents) {
    for (const MapPlan& plan : ownMaps())
        fillMap(sql, plan, owner, contents);
    if (const long long given = fillMap(sql, givenMap(), giver, contents); given != 0)
        store::setFriendsOfMap(sql, given, {owner});
}

} // namespace ipncsdk::world
