#include "world/MeasuringWorld.h"

#include "base/JsonText.h"
#include "media/loop/LoopFormat.h"
#include "store/Groups.h"
#include "store/Linkages.h"
#include "world/WorldCamera.h"

#include <array>

namespace ipncsdk::world {

namespace {

constexpr auto groupName = "测量";
constexpr int codeBoardOutput = 1205; ///< the chessboard instead of the code
constexpr int laserOutput = 1225;     ///< the laser

struct MeasuringCamera {
    const char* ipncid;
    const char* name;
    int scene;
    const char* boards; ///< JSON text, a list
    const char* plans;  ///< JSON text, a list without the ids that the store gives
};

// The trigger is what an operator, or another plan, switches; the timer goes off every few minutes by itself and
// counts only while its output is on.
constexpr std::array cameras = {
    MeasuringCamera{codeCameraId, "二维码测距", media::codeScene, R"json([
  {"pid":301,"type":"QR","ifname":"QR-1","name":"二维码位移","extend":"","softif":"0","params":{},"input":[
    {"pid":1201,"ifpid":301,"name":"X位移","unit":"mm","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0.5,
     "thresholds":[],"params":{"axis":"QRcode_x"}},
    {"pid":1202,"ifpid":301,"name":"Y位移","unit":"mm","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0.5,
     "thresholds":[],"params":{"axis":"QRcode_y"}},
    {"pid":1203,"ifpid":301,"name":"Z位移","unit":"mm","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0.5,
     "thresholds":[],"params":{"axis":"QRcode_z"}}],"output":[]},
  {"pid":302,"type":"IO","ifname":"IO-1","name":"测量控制","extend":"","softif":"0","params":{"mode":"plant"},"input":[
    {"pid":1208,"ifpid":302,"name":"触发","unit":"","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[{"level":1,"high":0.5,"low":null}],"params":{"follows":2}},
    {"pid":1209,"ifpid":302,"name":"定时允许","unit":"","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[{"level":1,"high":0.5,"low":null}],"params":{"follows":3}},
    {"pid":1210,"ifpid":302,"name":"定时器","unit":"","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[{"level":1,"high":0.5,"low":null}],"params":{"follows":0}}],
   "output":[
    {"pid":1205,"ifpid":302,"name":"标定板","unit":"","extend":"","params":{}},
    {"pid":1206,"ifpid":302,"name":"触发测量","unit":"","extend":"","params":{}},
    {"pid":1207,"ifpid":302,"name":"定时测量","unit":"","extend":"","params":{}}]}])json",
                    R"json([
  {"name":"触发测距","allinput":false,"logic":"or","disable":false,"report":true,
   "duration":-1,"threshold":1,"outmode":"all","interval":0,
   "input":[{"ifpid":302,"input":1208,"name":"测量控制,触发"}],"inputunion":[],"output":[],"outputunion":[]},
  {"name":"定时测距","allinput":false,"logic":"and","disable":false,"report":true,
   "duration":-1,"threshold":1,"outmode":"all","interval":0,
   "input":[{"ifpid":302,"input":1209,"name":"测量控制,定时允许"},{"ifpid":302,"input":1210,"name":"测量控制,定时器"}],
   "inputunion":[],"output":[],"outputunion":[]}])json"},
    MeasuringCamera{laserCameraId, "激光测距", media::laserScene, R"json([
  {"pid":311,"type":"LASER","ifname":"LASER-1","name":"激光光斑","extend":"","softif":"0","params":{},"input":[
    {"pid":1221,"ifpid":311,"name":"X位移","unit":"mm","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0.5,
     "thresholds":[],"params":{"axis":"laser_x"}},
    {"pid":1222,"ifpid":311,"name":"Y位移","unit":"mm","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0.5,
     "thresholds":[],"params":{"axis":"laser_y"}}],"output":[]},
  {"pid":312,"type":"IO","ifname":"IO-1","name":"测量控制","extend":"","softif":"0","params":{"mode":"plant"},"input":[
    {"pid":1227,"ifpid":312,"name":"触发","unit":"","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[{"level":1,"high":0.5,"low":null}],"params":{"follows":2}}],
   "output":[
    {"pid":1225,"ifpid":312,"name":"激光","unit":"","extend":"","params":{}},
    {"pid":1226,"ifpid":312,"name":"触发测量","unit":"","extend":"","params":{}}]}])json",
                    R"json([
  {"name":"触发测距","allinput":false,"logic":"or","disable":false,"report":true,
   "duration":-1,"threshold":1,"outmode":"all","interval":0,
   "input":[{"ifpid":312,"input":1227,"name":"测量控制,触发"}],"inputunion":[],"output":[],"outputunion":[]}])json"},
};

/// An output that nobody has switched yet is as `usual`.
bool isOn(const sensor::LatestValues& latest, int pid, bool usual) {
    const auto reading = latest.of(pid);
    return reading ? reading->value > 0.5 : usual;
}

} // namespace

void fillMeasuring(soci::session& sql, store::AccountId owner, int number) {
    const store::GroupId group = store::insertGroup(sql, owner, groupName);
    for (const MeasuringCamera& camera : cameras) {
        store::Device device = cameraDevice(camera.ipncid, camera.name, owner, ++number);
        device.scene = camera.scene;
        device.phase = 0;
        device.interfaces = camera.boards;
        insertCamera(sql, device, group);
        for (Json& plan : Json::parse(camera.plans)) {
            const long long id = store::newPlanId(sql);
            plan["linkplanid"] = id;
            plan["ipncid"] = camera.ipncid;
            store::insertPlan(sql, {id, camera.ipncid, toText(plan)});
        }
    }
}

std::function<int()> exhibitOf(const std::string& ipncid, const sensor::LatestValues& latest) {
    if (ipncid == codeCameraId)
        return [&latest] {
            return isOn(latest, codeBoardOutput, false) ? 1 : 0;
        };
    if (ipncid == laserCameraId)
        return [&latest] {
            return isOn(latest, laserOutput, true) ? 0 : 1;
        };
    return nullptr;
}

} // namespace ipncsdk::world
