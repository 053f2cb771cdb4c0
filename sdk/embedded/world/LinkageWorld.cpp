#include "world/LinkageWorld.h"

#include "base/JsonText.h"
#include "store/Devices.h"
#include "store/Linkages.h"
#include "store/Notices.h"

#include <array>
#include <string>
#include <string_view>

namespace ipncsdk::world {

namespace {

struct PlanPlan {
    const char* camera; ///< its name
    const char* plan;   ///< JSON text, without the ids that the store gives
};

// The pids are those of the boards in the world's tables.
constexpr std::array plans = {
    PlanPlan{"一号泵组", R"({"name":"泵组超压报警","allinput":false,"logic":"or","disable":false,"report":true,
        "duration":-1,"threshold":1,"outmode":"all","interval":0,
        "input":[{"ifpid":101,"input":1001,"name":"泵组仪表,出口压力"},{"ifpid":101,"input":1003,"name":"泵组仪表,电机温度"}],
        "inputunion":[],"output":[{"ifpid":102,"output":1006,"name":"泵组控制,声光报警"}],"outputunion":[]})"},
    PlanPlan{"蓄水池", R"({"name":"水位越限","allinput":false,"logic":"or","disable":false,"report":true,
        "duration":"10s","threshold":1,"outmode":"all","interval":0,
        "input":[{"ifpid":111,"input":1011,"name":"液位计,水位"}],"inputunion":[],"output":[],"outputunion":[]})"},
    PlanPlan{"危化品库", R"({"name":"可燃气体排风","allinput":false,"logic":"or","disable":false,"report":true,
        "duration":-1,"threshold":1,"outmode":"all","interval":0,
        "input":[{"ifpid":121,"input":1021,"name":"气体探测器,可燃气体"}],"inputunion":[],
        "output":[{"ifpid":122,"output":1025,"name":"联动输出,排风机"}],"outputunion":[]})"},
};

// Only the worst alarms cost a text message.
constexpr auto rule = R"json({"name":"值班通知","selfuse":true,"recvphones":["13600136000"],
    "reporttype":["threshold","offline","other"],"reportmode":["sms","app"],"smslevel":["3"],"applevel":["1","2","3"],
    "smstemplate":"($1)：($5) ($6)($7) 达到($3)，请处理。","apptemplate":"($1) ($2)：($5) ($6)($7)","enable":true})json";

} // namespace

void fillLinkages(soci::session& sql, store::AccountId owner) {
    Json watched = Json::array();
    for (const store::PlacedDevice& placed : store::devicesOf(sql, owner)) {
        for (const PlanPlan& plan : plans) {
            if (placed.device.owner != owner || std::string_view(plan.camera) != placed.device.name)
                continue;
            const long long id = store::newPlanId(sql);
            Json document = Json::parse(plan.plan);
            document["linkplanid"] = id;
            document["ipncid"] = placed.device.ipncid;
            store::insertPlan(sql, {id, placed.device.ipncid, toText(document)});
            watched.push_back(placed.device.ipncid);
        }
    }
    Json document = Json::parse(rule);
    const long long id = store::newRuleId(sql);
    document["id"] = id;
    document["ipncids"] = std::move(watched);
    store::putRule(sql, {id, owner, toText(document)});
}

} // namespace ipncsdk::world
