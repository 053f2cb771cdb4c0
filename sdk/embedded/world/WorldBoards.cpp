#include "world/WorldTables.h"

#include <string_view>

namespace ipncsdk::world {

namespace {

/// An input or output. The limits are those of the levels 1, 2 and 3, as many as there are.
struct PortRow {
    int pid;
    const char* name;
    const char* unit;
    std::vector<double> highs = {};
    std::vector<double> lows = {};
    double hysteresis = 0;
};

struct BoardRow {
    const char* camera;
    int pid;
    const char* type;
    const char* ifname;
    const char* name;
    std::vector<PortRow> inputs;
    std::vector<PortRow> outputs = {};
};

const std::vector<BoardRow>& rows() {
    static const std::vector<BoardRow> table = {
        {"一号泵组",
         101,
         "RS485",
         "RS485-1",
         "泵组仪表",
         {{1001, "出口压力", "MPa", {0.8, 0.9, 1.0}, {}, 0.01},
          {1002, "瞬时流量", "m³/h", {150, 165, 180}, {}, 2},
          {1003, "电机温度", "℃", {45, 55, 65}, {}, 1}}},
        {"一号泵组",
         102,
         "IO",
         "IO-1",
         "泵组控制",
         {{1004, "运行反馈", ""}},
         {{1005, "启停", ""}, {1006, "声光报警", ""}}},
        {"蓄水池",
         111,
         "RS485",
         "RS485-1",
         "液位计",
         {{1011, "水位", "m", {4.0, 4.3, 4.6}, {}, 0.05}, {1012, "水温", "℃"}}},
        {"蓄水池", 112, "ZIGBEE", "ZIGBEE-1", "池壁节点", {{1013, "渗漏", "", {0.5}}}},
        {"危化品库",
         121,
         "RS485",
         "RS485-1",
         "气体探测器",
         {{1021, "可燃气体", "%LEL", {10, 20, 40}, {}, 1},
          {1022, "温度", "℃", {35, 40, 50}, {}, 0.5},
          {1023, "湿度", "%RH", {70, 80}, {}, 1}}},
        {"危化品库", 122, "IO", "IO-1", "联动输出", {{1024, "门磁", "", {0.5}}}, {{1025, "排风机", ""}}},
        {"二号泵组",
         131,
         "RS485",
         "RS485-1",
         "泵组仪表",
         {{1031, "出口压力", "MPa", {0.8, 0.9, 1.0}, {}, 0.01},
          {1032, "瞬时流量", "m³/h"},
          {1033, "电机温度", "℃", {45, 55, 65}, {}, 1},
          {1034, "轴承振动", "mm/s", {4.5, 7.1, 11.2}, {}, 0.2}}},
        {"二号泵组", 132, "IO", "IO-1", "泵组控制", {{1035, "运行反馈", ""}}, {{1036, "启停", ""}}},
        {"三号泵组",
         141,
         "RS485",
         "RS485-1",
         "泵组仪表",
         {{1041, "出口压力", "MPa", {0.8, 0.9, 1.0}, {}, 0.01}, {1042, "瞬时流量", "m³/h"}}},
        {"三号泵组", 142, "IO", "IO-1", "泵组控制", {{1043, "运行反馈", ""}}, {{1044, "启停", ""}}},
        {"加药间",
         151,
         "RS485",
         "RS485-1",
         "水质仪",
         {{1051, "余氯", "mg/L", {1.5, 2.0, 3.0}, {}, 0.05}, {1052, "酸碱度", "pH", {8.0, 8.5, 9.0}, {}, 0.1}}},
        {"加药间", 152, "IO", "IO-1", "加药控制", {{1053, "药罐空", "", {0.5}}}, {{1054, "加药泵", ""}}},
        {"进水口",
         161,
         "RS485",
         "RS485-1",
         "进水仪表",
         {{1061, "前池水位", "m", {}, {2.2, 1.8, 1.4}, 0.05}, {1062, "水温", "℃"}}},
        {"出水口",
         171,
         "RS485",
         "RS485-1",
         "出水仪表",
         {{1071, "出水流量", "m³/h"}, {1072, "管网压力", "MPa", {}, {0.5, 0.4, 0.3}, 0.01}}},
        {"配电间",
         181,
         "RS485",
         "RS485-1",
         "电力仪表",
         {{1081, "A相电压", "V", {240, 250, 260}, {}, 1},
          {1082, "A相电流", "A", {60, 80, 100}, {}, 2},
          {1083, "柜内温度", "℃", {40, 50, 60}, {}, 1}}},
        {"配电间", 182, "IO", "IO-1", "配电柜", {{1084, "柜门", "", {0.5}}}, {{1085, "散热风扇", ""}}},
        {"机房",
         191,
         "RS485",
         "RS485-1",
         "温湿度",
         {{1091, "温度", "℃", {30, 35, 40}, {}, 0.5}, {1092, "湿度", "%RH", {70, 80}, {}, 1}}},
        {"机房", 192, "ZIGBEE", "ZIGBEE-1", "漏水节点", {{1093, "漏水", "", {0.5}}}},
        {"原料库一区",
         201,
         "RS485",
         "RS485-1",
         "温湿度",
         {{1101, "温度", "℃", {35, 40, 50}, {}, 0.5}, {1102, "湿度", "%RH", {65, 75, 85}, {}, 1}}},
        {"原料库一区", 202, "IO", "IO-1", "卷帘门", {{1103, "门磁", ""}}, {{1104, "照明", ""}}},
        {"成品库一区",
         211,
         "RS485",
         "RS485-1",
         "温湿度",
         {{1111, "温度", "℃", {35, 40, 50}, {}, 0.5}, {1112, "湿度", "%RH", {65, 75, 85}, {}, 1}}},
        {"喷涂车间",
         221,
         "RS485",
         "RS485-1",
         "气体探测器",
         {{1121, "可燃气体", "%LEL", {10, 20, 40}, {}, 1}, {1122, "温度", "℃", {38, 45, 55}, {}, 0.5}}},
        {"喷涂车间", 222, "IO", "IO-1", "联动输出", {}, {{1123, "排风机", ""}, {1124, "警灯", ""}}},
        {"地下一层A区",
         231,
         "RS232",
         "RS232-1",
         "一氧化碳探测器",
         {{1131, "一氧化碳", "ppm", {600, 800, 1000}, {}, 10}}},
        {"地下一层A区", 232, "IO", "IO-1", "风机控制", {}, {{1132, "排风机", ""}}},
        {"充电桩区", 241, "RS485", "RS485-1", "电表", {{1141, "充电功率", "kW", {70, 90, 110}, {}, 2}}},
        {"充电桩区", 242, "IO", "IO-1", "烟感", {{1142, "烟感", "", {0.5}}}},
        {"消防控制室", 251, "RS485", "RS485-1", "消防水压", {{1151, "消防水压", "MPa", {}, {0.5, 0.4, 0.3}, 0.01}}},
        {"消防控制室", 252, "IO", "IO-1", "警铃", {}, {{1152, "警铃", ""}}},
    };
    return table;
}

/// What is computed and measured on pictures needs parameters, and is written out.
constexpr auto computed = R"json(
  {"pid":103,"type":"SOFT","ifname":"SOFT-1","name":"泵组计算","extend":"","softif":"1","params":{"period":1000},"input":[
    {"pid":1007,"ifpid":103,"name":"水功率","unit":"kW","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[],"params":{"expression":"i1001 * i1002 / 3.6"}},
    {"pid":1008,"ifpid":103,"name":"三泵最高压力","unit":"MPa","extend":"","isupload":"1","scale":1,"offset":0,
     "hysteresis":0.01,"thresholds":[{"level":3,"high":1.02,"low":null}],
     "params":{"expression":"max(i1001, i1031, i1041)"}}],"output":[]})json";

constexpr auto measured = R"json(
  {"pid":104,"type":"VIDEO","ifname":"VIDEO-1","name":"画面分析","extend":"","softif":"0","params":{"period":2000},"input":[
    {"pid":1009,"ifpid":104,"name":"画面移动","unit":"%","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":1,
     "thresholds":[],"params":{"measure":"motion","x":0,"y":0,"w":1,"h":1}},
    {"pid":1010,"ifpid":104,"name":"画面亮度","unit":"%","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":1,
     "thresholds":[{"level":1,"high":null,"low":5}],
     "params":{"measure":"brightness","x":0,"y":0,"w":1,"h":1}}],"output":[]})json";

/// A tag that is carried round the pump station; metres on its plan.
constexpr auto positioned = R"json(
  {"pid":261,"type":"POSITION","ifname":"POSITION-1","name":"巡检定位","extend":"","softif":"0","params":{"mode":"plant"},
   "protocol":"4353","info":{"locations":[{"x":"25","y":"9"},{"x":"58","y":"9"},{"x":"58","y":"31"},{"x":"25","y":"31"}]},
   "input":[
    {"pid":1161,"ifpid":261,"name":"X坐标","unit":"m","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[],"params":{"axis":"x"}},
    {"pid":1162,"ifpid":261,"name":"Y坐标","unit":"m","extend":"","isupload":"1","scale":1,"offset":0,"hysteresis":0,
     "thresholds":[],"params":{"axis":"y"}}],"output":[]})json";

Json limitAt(const std::vector<double>& limits, std::size_t at) {
    return at < limits.size() ? Json(limits[at]) : Json(nullptr);
}

Json portOf(const PortRow& row, int board, bool isInput) {
    Json port = {{"pid", row.pid}, {"ifpid", board}, {"name", row.name}, {"unit", row.unit}, {"extend", ""}};
    port["params"] = Json::object();
    if (!isInput)
        return port;
    Json thresholds = Json::array();
    for (std::size_t level = 0; level < row.highs.size() || level < row.lows.size(); ++level)
        thresholds.push_back({{"level", static_cast<int>(level) + 1},
                              {"high", limitAt(row.highs, level)},
                              {"low", limitAt(row.lows, level)}});
    port.update({{"isupload", "1"}, {"scale", 1}, {"offset", 0}, {"hysteresis", row.hysteresis}});
    port["thresholds"] = std::move(thresholds);
    return port;
}

Json boardOf(const BoardRow& row) {
    Json board = {{"pid", row.pid},   {"type", row.type}, {"ifname", row.ifname},
                  {"name", row.name}, {"extend", ""},     {"softif", "0"}};
    board["params"] = {{"mode", "plant"}};
    board["input"] = Json::array();
    board["output"] = Json::array();
    for (const PortRow& input : row.inputs)
        board["input"].push_back(portOf(input, row.pid, true));
    for (const PortRow& output : row.outputs)
        board["output"].push_back(portOf(output, row.pid, false));
    return board;
}

std::vector<BoardPlan> makePlans() {
    std::vector<BoardPlan> plans;
    for (const BoardRow& row : rows()) {
        if (plans.empty() || std::string_view(plans.back().camera) != row.camera)
            plans.push_back({row.camera, Json::array(), {{"sublist", Json::array()}}});
        const bool sub = std::string_view(row.type) == "ZIGBEE";
        (sub ? plans.back().extend["sublist"] : plans.back().interfaces).push_back(boardOf(row));
    }
    plans.front().extend["sublist"].push_back(Json::parse(computed));
    plans.front().interfaces.push_back(Json::parse(measured));
    plans.push_back({"泵站控制室", Json::array({Json::parse(positioned)}), {{"sublist", Json::array()}}});
    return plans;
}

} // namespace

const std::vector<BoardPlan>& boards() {
    static const std::vector<BoardPlan> plans = makePlans();
    return plans;
}

} // namespace ipncsdk::world
