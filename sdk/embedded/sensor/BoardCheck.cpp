#include "sensor/BoardCheck.h"

#include "base/Text.h"
#include "sensor/Board.h"
#include "sensor/BoardType.h"
#include "sensor/ModbusValue.h"
#include "sensor/Position.h"
#include "sensor/SoftExpression.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>

namespace ipncsdk::sensor {

namespace {

constexpr std::size_t longestName = 64;
constexpr std::size_t longestUnit = 16;
constexpr std::size_t longestExtend = 1024;
constexpr double widest = 1e12;

/// Checks a text that may be missing and writes what is usual then.
std::string completeText(Json& object, const char* key, const char* title, std::size_t least, std::size_t most,
                         const char* usual) {
    if (memberAt(object, key) == nullptr && usual != nullptr)
        object[key] = usual;
    const auto text = textAt(object, key);
    const auto count = text ? characterCount(*text) : std::nullopt;
    const bool blank = text && least > 0 && text->find_first_not_of(' ') == std::string::npos;
    if (!count || *count < least || !isPlainText(*text, most) || blank)
        return std::string(title) + "的字符数应为 " + std::to_string(least) + "～" + std::to_string(most);
    return {};
}

std::string completeNumber(Json& object, const char* key, const char* title, double low, double usual) {
    Json& value = object[key];
    if (value.is_null())
        value = usual;
    if (!value.is_number() || !std::isfinite(value.get<double>()) || value.get<double>() < low ||
        std::abs(value.get<double>()) > widest)
        return std::string(title) + "不是有效的数值";
    return {};
}

bool isLimit(const Json* value) {
    return value == nullptr || value->is_null() || (value->is_number() && std::isfinite(value->get<double>()));
}

std::string checkThresholds(const Json& thresholds) {
    std::set<int> levels;
    if (!thresholds.is_array())
        return "阈值应为列表";
    for (const Json& entry : thresholds) {
        const int level = wholeAt(entry, "level", 0);
        if (level < 1 || level > 3 || !levels.insert(level).second)
            return "阈值等级应为 1～3, 每级一个";
        const Json* const high = memberAt(entry, "high");
        const Json* const low = memberAt(entry, "low");
        if (!isLimit(high) || !isLimit(low))
            return "阈值不是有效的数值";
        const bool both = high != nullptr && low != nullptr && high->is_number() && low->is_number();
        if (both && high->get<double>() <= low->get<double>())
            return "阈值上限应大于下限";
    }
    return {};
}

/// The rules that concern several parameters of a port at once.
std::string checkTogether(const Json& params, const std::string& type, bool isInput) {
    if (memberAt(params, "function") != nullptr)
        return registerComplaint(params, isInput);
    if (type == "VIDEO" && (numberAt(params, "x", 0) + numberAt(params, "w", 1) > 1.0001 ||
                            numberAt(params, "y", 0) + numberAt(params, "h", 1) > 1.0001))
        return "测量区域超出画面";
    if (type == "SOFT") {
        SoftExpression expression;
        return expression.parse(textOr(params, "expression", ""));
    }
    return {};
}

/// The port of the old list that has this pid.
const Json* portWith(const Json& list, int pid) {
    const auto found =
        std::find_if(list.begin(), list.end(), [pid](const Json& port) { return wholeAt(port, "pid", 0) == pid; });
    return found == list.end() ? nullptr : &*found;
}

Json listAt(const Json& board, const char* key) {
    const Json* const list = memberAt(board, key);
    return list != nullptr && list->is_array() ? *list : Json::array();
}

class PortsCheck {
public:
    PortsCheck(const BoardType& type, CheckedBoard& checked, const Json& old, const std::function<int()>& nextPid)
        : type_(type)
        , checked_(checked)
        , old_(old)
        , nextPid_(nextPid) {}

    /// Replaces the list of the record by the checked one.
    std::string take(const char* key, bool isInput) {
        const Json submitted = listAt(checked_.record, key);
        const Json before = listAt(old_, key);
        checked_.tooMany = submitted.size() > mostPorts;
        if (checked_.tooMany)
            return "端口过多";
        if (!isInput && !type_.switches && !submitted.empty())
            return std::string(type_.title) + "没有控制输出";
        Json ports = Json::array();
        std::set<int> kept;
        for (const Json& entry : submitted) {
            Json port = entry;
            if (std::string wrong = takePort(port, before, isInput, kept); !wrong.empty())
                return textOr(entry, "name", "") + ": " + wrong;
            ports.push_back(std::move(port));
        }
        for (const Json& port : before) {
            if (const int pid = wholeAt(port, "pid", 0); kept.count(pid) == 0)
                checked_.removed.push_back(pid);
        }
        checked_.record[key] = std::move(ports);
        return {};
    }

private:
    std::string takePort(Json& port, const Json& before, bool isInput, std::set<int>& kept) {
        if (!port.is_object())
            return "端口格式不正确";
        if (memberAt(port, "pid") != nullptr) {
            const int pid = wholeAt(port, "pid", 0);
            const Json* const known = portWith(before, pid);
            if (known == nullptr || !kept.insert(pid).second)
                return "采集输入或控制输出不存在";
            Json merged = *known;
            merged.update(port, true);
            port = std::move(merged);
        } else {
            port["pid"] = nextPid_();
        }
        port["ifpid"] = checked_.record["pid"];
        std::string wrong = isInput ? completeInput(port) : completeOutput(port);
        if (!wrong.empty())
            return wrong;
        Json& params = port["params"];
        if (params.is_null())
            params = Json::object();
        if (!params.is_object())
            return "参数格式不正确";
        wrong = completeParams(isInput ? type_.inputs : type_.outputs, checked_.record["params"], params);
        return wrong.empty() ? checkTogether(params, type_.name, isInput) : wrong;
    }

    static std::string completeOutput(Json& output) {
        for (const auto& [key, title, least, most] : {std::tuple{"name", "名称", std::size_t{1}, longestName},
                                                      {"unit", "单位", std::size_t{0}, longestUnit},
                                                      {"extend", "附加信息", std::size_t{0}, longestExtend}}) {
            if (std::string wrong = completeText(output, key, title, least, most, least > 0 ? nullptr : "");
                !wrong.empty())
                return wrong;
        }
        return {};
    }

    const BoardType& type_;
    CheckedBoard& checked_;
    const Json& old_;
    const std::function<int()>& nextPid_;
};

/// "RS485-2": the type's name and the number of one of its interfaces.
bool isInterfaceName(const BoardType& type, const std::string& name) {
    const std::string start = std::string(type.name) + "-";
    for (int slot = 1; slot <= type.slots; ++slot) {
        if (name == start + std::to_string(slot))
            return true;
    }
    return false;
}

/// Paths are opened by the service, so only those of the usual forms are taken.
std::string checkPath(const Json& params) {
    for (const char* key : {"device", "chip"}) {
        const auto path = textAt(params, key);
        const bool isPort =
            path && path->compare(0, 3, "COM") == 0 && path->find_first_of("/\\.") == std::string::npos;
        const bool isDrive = path && path->size() > 2 && (*path)[1] == ':';
        if (path && ((!isPort && !isDrive && path->front() != '/') || path->find("..") != std::string::npos))
            return "串口或目录应为绝对路径";
    }
    return {};
}

std::string checkFrame(const BoardType& type, Json& record) {
    std::string wrong = completeText(record, "name", "名称", 1, longestName, nullptr);
    if (wrong.empty())
        wrong = completeText(record, "extend", "附加信息", 0, longestExtend, "");
    if (wrong.empty() && !isInterfaceName(type, textOr(record, "ifname", "")))
        wrong = "接口名称不正确";
    Json& params = record["params"];
    if (params.is_null())
        params = Json::object();
    if (wrong.empty() && !params.is_object())
        wrong = "参数格式不正确";
    if (wrong.empty())
        wrong = completeParams(type.fields, params, params);
    if (wrong.empty() && type.protocol != nullptr)
        wrong = completePosition(record);
    return wrong.empty() ? checkPath(params) : wrong;
}

} // namespace

std::string completeInput(Json& input) {
    if (memberAt(input, "thresholds") == nullptr)
        input["thresholds"] = Json::array();
    if (memberAt(input, "isupload") == nullptr)
        input["isupload"] = "1";
    const auto upload = textAt(input, "isupload");
    std::string wrong = completeText(input, "name", "名称", 1, longestName, nullptr);
    if (wrong.empty())
        wrong = completeText(input, "unit", "单位", 0, longestUnit, "");
    if (wrong.empty())
        wrong = completeText(input, "extend", "附加信息", 0, longestExtend, "");
    if (wrong.empty())
        wrong = completeNumber(input, "scale", "系数", -widest, 1);
    if (wrong.empty() && numberAt(input, "scale", 1) == 0)
        wrong = "系数不能为 0";
    if (wrong.empty())
        wrong = completeNumber(input, "offset", "偏移", -widest, 0);
    if (wrong.empty())
        wrong = completeNumber(input, "hysteresis", "回差", 0, 0);
    if (wrong.empty() && upload != "0" && upload != "1")
        wrong = "是否上传应为 0 或 1";
    return wrong.empty() ? checkThresholds(input["thresholds"]) : wrong;
}

void dropReadings(Json& board) {
    for (const char* list : {"input", "output"}) {
        if (memberAt(board, list) == nullptr || !board[list].is_array())
            continue;
        for (Json& port : board[list]) {
            for (const char* key : {"state", "value", "time"}) {
                if (port.is_object())
                    port.erase(key);
            }
        }
    }
}

CheckedBoard checkBoard(const Json& submitted, const Json& old, const std::function<int()>& nextPid) {
    CheckedBoard checked;
    checked.record = old.is_object() ? old : Json::object();
    checked.record.update(submitted);
    const BoardType* const type = findBoardType(textOr(checked.record, "type", ""));
    if (type == nullptr) {
        checked.wrong = "传感器类型未知";
        return checked;
    }
    if (old.is_object() && textOr(old, "type", "") != type->name) {
        checked.wrong = "传感器类型不能更改";
        return checked;
    }
    // Parameters that the submitted board does not name stay; a board of an older store is simulated.
    Json params = old.is_object() ? boardOf(old).params : Json::object();
    if (old.is_object() && isPlant(boardOf(old)))
        params["mode"] = "plant";
    if (const Json* const given = memberAt(submitted, "params"); given != nullptr && given->is_object())
        params.update(*given);
    checked.record["params"] = std::move(params);
    // A password that was shown as its mask stays what it was.
    if (textAt(checked.record["params"], "password") == secretMask)
        checked.record["params"]["password"] = old.is_object() ? textOr(boardOf(old).params, "password", "") : "";
    checked.wrong = checkFrame(*type, checked.record);
    if (!checked.wrong.empty())
        return checked;
    checked.record["pid"] = old.is_object() ? wholeAt(old, "pid", 0) : nextPid();
    checked.record["softif"] = checked.record["type"] == "SOFT" ? "1" : "0";
    checked.record.erase("online");
    PortsCheck ports(*type, checked, old, nextPid);
    checked.wrong = ports.take("input", true);
    if (checked.wrong.empty())
        checked.wrong = ports.take("output", false);
    dropReadings(checked.record);
    return checked;
}

} // namespace ipncsdk::sensor
