#include "sensor/BoardType.h"

#include "sensor/BoardTemplates.h"
#include "sensor/Position.h"

#include <algorithm>

namespace ipncsdk::sensor {

namespace {

using Kind = Field::Kind;
using Choices = std::vector<Field::Choice>;

constexpr double longestText = 255;

Field number(const char* key, const char* name, double low, double high, Json usual) {
    return {key, name, Kind::Int, low, high, std::move(usual)};
}

Field real(const char* key, const char* name, double low, double high, Json usual) {
    return {key, name, Kind::Real, low, high, std::move(usual)};
}

Field text(const char* key, const char* name, double least, Json usual = {}, double most = longestText) {
    return {key, name, Kind::Text, least, most, std::move(usual)};
}

Field choice(const char* key, const char* name, Choices choices, Json usual) {
    return {key, name, Kind::Choice, 0, 0, std::move(usual), std::move(choices)};
}

Field when(std::vector<const char*> modes, Field field) {
    field.when = Field::Condition{"mode", std::move(modes)};
    return field;
}

Field period(int usual) {
    return number("period", "采集周期(ms)", 100, 3'600'000, usual);
}

const Field::Choice plant = {"plant", "模拟"};

std::vector<Field> modbusFields() {
    Choices rates;
    for (const auto& [rate, name] : {std::pair{300, "300"},
                                     {600, "600"},
                                     {1200, "1200"},
                                     {2400, "2400"},
                                     {4800, "4800"},
                                     {9600, "9600"},
                                     {19200, "19200"},
                                     {38400, "38400"},
                                     {57600, "57600"},
                                     {115200, "115200"}})
        rates.push_back({rate, name});
    return {choice("mode", "连接方式", {{"rtu", "串口 Modbus RTU"}, {"tcp", "网络 Modbus TCP"}, plant}, "rtu"),
            when({"rtu"}, text("device", "串口", 1, "/dev/ttyS0")),
            when({"rtu"}, choice("baud", "波特率", std::move(rates), 9600)),
            when({"rtu"}, choice("parity", "校验", {{"N", "无"}, {"E", "偶校验"}, {"O", "奇校验"}}, "N")),
            when({"rtu"}, choice("databits", "数据位", {{7, "7"}, {8, "8"}}, 8)),
            when({"rtu"}, choice("stopbits", "停止位", {{1, "1"}, {2, "2"}}, 1)),
            when({"tcp"}, text("host", "主机", 1)),
            when({"tcp"}, number("port", "端口", 1, 65535, 502)),
            when({"rtu", "tcp"}, number("slave", "从站地址", 0, 247, 1)),
            period(1000),
            when({"rtu", "tcp"}, number("timeout", "超时(ms)", 50, 10'000, 1000))};
}

std::vector<Field> registerFields(Choices functions, const Json& usual) {
    const Choices formats = {{"bit", "位"},         {"u16", "16位无符号"}, {"s16", "16位有符号"},
                             {"u32", "32位无符号"}, {"s32", "32位有符号"}, {"f32", "32位浮点"}};
    const Choices orders = {{"ABCD", "ABCD"}, {"CDAB", "CDAB"}, {"BADC", "BADC"}, {"DCBA", "DCBA"}};
    return {when({"rtu", "tcp"}, choice("function", "功能码", std::move(functions), usual)),
            when({"rtu", "tcp"}, number("address", "寄存器地址", 0, 65535, 0)),
            when({"rtu", "tcp"}, choice("format", "数据格式", formats, "u16")),
            when({"rtu", "tcp"}, choice("order", "字节顺序", orders, "ABCD"))};
}

BoardType serial(const char* name, const char* title, int slots, bool shared) {
    return {
        name,
        title,
        false,
        slots,
        shared,
        modbusFields(),
        registerFields({{1, "01 读线圈"}, {2, "02 读离散输入"}, {3, "03 读保持寄存器"}, {4, "04 读输入寄存器"}}, 3),
        registerFields({{5, "05 写线圈"}, {6, "06 写单个寄存器"}, {16, "16 写多个寄存器"}}, 6),
        true};
}

BoardType lines() {
    const std::vector<Field> port = {when({"gpio"}, number("line", "引脚", 0, 1023, {})),
                                     when({"gpio"}, choice("invert", "取反", {{0, "否"}, {1, "是"}}, 0))};
    std::vector<Field> inputs = port;
    inputs.push_back(when({"plant"}, number("follows", "跟随第几路输出(0 为否)", 0, 64, 0)));
    return {"IO",
            "通用输入输出",
            false,
            1,
            false,
            {choice("mode", "连接方式", {{"gpio", "GPIO"}, plant}, "gpio"),
             when({"gpio"}, text("chip", "GPIO 芯片或目录", 1, "/dev/gpiochip0")), period(500)},
            inputs,
            port,
            true};
}

BoardType video() {
    return {"VIDEO",
            "视频分析",
            false,
            1,
            false,
            {period(1000)},
            {choice("measure", "测量", {{"motion", "移动"}, {"brightness", "亮度"}}, "motion"),
             real("x", "左", 0, 1, 0), real("y", "上", 0, 1, 0), real("w", "宽", 0.01, 1, 1),
             real("h", "高", 0.01, 1, 1)},
            {},
            false};
}

BoardType soft() {
    return {"SOFT", "软件接口", true, 8, true, {period(1000)}, {text("expression", "表达式", 1)}, {}, false};
}

/// The way to a node that publishes its values, see `MqttDriver`.
std::vector<Field> brokerFields() {
    return {choice("mode", "连接方式", {{"mqtt", "MQTT"}, plant}, "mqtt"),
            when({"mqtt"}, text("broker", "服务器", 1, "localhost")), when({"mqtt"}, text("user", "用户名", 0, "")),
            when({"mqtt"}, {"password", "密码", Kind::Secret, 0, longestText, ""}),
            when({"mqtt"}, text("topic", "主题", 1))};
}

BoardType zigbee() {
    const std::vector<Field> port = {when({"mqtt"}, text("key", "数据键", 1, {}, 64))};
    return {"ZIGBEE", "ZigBee", true, 8, true, brokerFields(), port, port, true};
}

BoardType position() {
    return {"POSITION",
            "定位传感器",
            false,
            8,
            true,
            brokerFields(),
            {choice("axis", "坐标", {{"x", "X"}, {"y", "Y"}}, "x"), when({"mqtt"}, text("key", "数据键", 1, {}, 64))},
            {},
            false,
            positionProtocol};
}

/// A board whose values the client measures in the camera's pictures and hands in.
BoardType measured(const char* name, const char* title, Choices axes) {
    const Json first = axes.front().value;
    return {name, title, false, 1, false, {}, {choice("axis", "坐标", std::move(axes), first)}, {}, false};
}

BoardType marks() {
    return measured("QR", "二维码", {{"QRcode_x", "X"}, {"QRcode_y", "Y"}, {"QRcode_z", "Z"}});
}

BoardType spots() {
    return measured("LASER", "激光光斑", {{"laser_x", "X"}, {"laser_y", "Y"}});
}

Json fieldsJson(const std::vector<Field>& fields) {
    Json list = Json::array();
    for (const Field& field : fields)
        list.push_back(toJson(field));
    return list;
}

} // namespace

const std::vector<BoardType>& boardTypes() {
    static const std::vector<BoardType> types = {serial("RS485", "RS485", 2, true),
                                                 serial("RS232", "RS232", 1, false),
                                                 lines(),
                                                 video(),
                                                 soft(),
                                                 zigbee(),
                                                 marks(),
                                                 spots(),
                                                 position()};
    return types;
}

const BoardType* findBoardType(std::string_view name) {
    const auto found = std::find_if(boardTypes().begin(), boardTypes().end(),
                                    [name](const BoardType& type) { return name == type.name; });
    return found == boardTypes().end() ? nullptr : &*found;
}

bool isHandedIn(std::string_view type) {
    return type == "QR" || type == "LASER";
}

Json boardTypesDocument() {
    Json types = Json::array();
    for (const BoardType& type : boardTypes()) {
        types.push_back({{"type", type.name},
                         {"name", type.title},
                         {"sublist", type.sublist},
                         {"fields", fieldsJson(type.fields)},
                         {"inputfields", fieldsJson(type.inputs)},
                         {"outputfields", fieldsJson(type.outputs)}});
        if (type.protocol != nullptr)
            types.back()["protocol"] = type.protocol;
    }
    return {{"sensortypes", std::move(types)}, {"templates", boardTemplates()}};
}

} // namespace ipncsdk::sensor
