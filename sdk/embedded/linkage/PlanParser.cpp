#include "linkage/PlanParser.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>
#include <string_view>

namespace ipncsdk::linkage {

namespace {

constexpr std::size_t longestName = 64;
constexpr std::size_t mostMembers = 200;
constexpr std::chrono::milliseconds intervalUnit{100};
constexpr std::int64_t longestInterval = 864'000; ///< a day, in units
constexpr std::int64_t shortestDuration = 10;     ///< seconds
constexpr std::int64_t longestDuration = 86'400;

/// A whole number, or a text of digits that may end with `unit`.
std::optional<std::int64_t> countAt(const Json& object, const char* key, std::string_view unit = {}) {
    if (const auto number = integerAt(object, key))
        return number;
    const auto text = textAt(object, key);
    if (!text)
        return std::nullopt;
    std::int64_t number = 0;
    const char* const last = text->data() + text->size();
    const auto [end, error] = std::from_chars(text->data(), last, number);
    const std::string_view rest(end, static_cast<std::size_t>(last - end));
    return error == std::errc() && (rest.empty() || rest == unit) ? std::make_optional(number) : std::nullopt;
}

/// Reads a document step by step; the first fault stays.
class Reader {
public:
    explicit Reader(std::string& fault)
        : fault_(fault) {}

    void fail(const char* text) {
        if (fault_.empty())
            fault_ = text;
    }
    [[nodiscard]] bool good() const { return fault_.empty(); }

    bool flag(const Json& object, const char* key, bool otherwise) {
        const Json* member = memberAt(object, key);
        if (member == nullptr || member->is_null())
            return otherwise;
        if (!member->is_boolean())
            fail("联动策略格式不正确!");
        return member->is_boolean() && member->get<bool>();
    }

    /// A list that may be missing.
    const Json& list(const Json& object, const char* key) {
        static const Json empty = Json::array();
        const Json* member = memberAt(object, key);
        if (member == nullptr || member->is_null())
            return empty;
        if (!member->is_array() || member->size() > mostMembers) {
            fail("联动策略格式不正确!");
            return empty;
        }
        return *member;
    }

    int pid(const Json& entry, const char* key) {
        const Json* member = memberAt(entry, key);
        const auto number = member != nullptr ? pidOf(*member) : std::nullopt;
        if (!number)
            fail("联动策略格式不正确!");
        return number.value_or(0);
    }

    /// The first entry of the lists of relations is "and"; whatever else stands there is the other one.
    static bool isAnd(const Json& object) { return textAt(object, "logic") == "and"; }

    Mode mode(const Json& object) {
        Mode mode;
        mode.loop = textAt(object, "outmode") == "loop";
        if (memberAt(object, "interval") == nullptr)
            return mode;
        const auto units = countAt(object, "interval");
        if (!units || *units < 0 || *units > longestInterval)
            fail("请输入正确的执行时间间隔!");
        else
            mode.interval = intervalUnit * *units;
        return mode;
    }

private:
    std::string& fault_;
};

void readDuration(const Json& document, Reader& reader, Plan& plan) {
    const auto seconds = memberAt(document, "duration") == nullptr ? -1 : countAt(document, "duration", "s");
    if (!seconds || (*seconds != -1 && (*seconds < shortestDuration || *seconds > longestDuration)))
        reader.fail("条件有效时长应为10～86400秒!");
    else if (*seconds != -1)
        plan.duration = std::chrono::seconds(*seconds);
}

void readConditions(const Json& document, Reader& reader, Plan& plan) {
    for (const Json& entry : reader.list(document, "input"))
        plan.conditions.push_back({{reader.pid(entry, "input")}, false});
    for (const Json& entry : reader.list(document, "inputunion")) {
        Condition condition;
        condition.all = Reader::isAnd(entry);
        for (const Json& member : reader.list(entry, "inputunion"))
            condition.inputs.push_back(reader.pid(member, "input"));
        if (condition.inputs.empty())
            reader.fail("请先添加条件!");
        plan.conditions.push_back(std::move(condition));
    }
    std::set<int> single;
    for (const Condition& condition : plan.conditions) {
        if (condition.inputs.size() == 1 && !single.insert(condition.inputs.front()).second)
            reader.fail("选择的输入不能相同!");
    }
    if (plan.conditions.empty() && !plan.allInputs)
        reader.fail("请先添加条件!");
}

void readActions(const Json& document, Reader& reader, Plan& plan) {
    for (const Json& entry : reader.list(document, "output"))
        plan.actions.push_back({{reader.pid(entry, "output")}, {}});
    for (const Json& entry : reader.list(document, "outputunion")) {
        Action action;
        action.mode = reader.mode(entry);
        for (const Json& member : reader.list(entry, "outputunion"))
            action.outputs.push_back(reader.pid(member, "output"));
        if (action.outputs.empty())
            reader.fail("请先添加动作!");
        plan.actions.push_back(std::move(action));
    }
}

} // namespace

std::optional<Plan> parsePlan(const Json& document, std::string& fault) {
    fault.clear();
    Reader reader(fault);
    Plan plan;
    plan.id = integerAt(document, "linkplanid").value_or(0);
    plan.name = textAt(document, "name").value_or("");
    if (plan.name.find_first_not_of(' ') == std::string::npos || !isPlainText(plan.name, longestName))
        reader.fail("请输入联动策略名称!");
    plan.enabled = !reader.flag(document, "disable", false);
    plan.report = reader.flag(document, "report", false);
    plan.allInputs = reader.flag(document, "allinput", false);
    plan.allConditions = Reader::isAnd(document);
    const auto threshold = memberAt(document, "threshold") == nullptr ? 1 : countAt(document, "threshold");
    if (!threshold || *threshold < 1 || *threshold > highestLevel)
        reader.fail("阀值等级不正确!");
    else
        plan.threshold = static_cast<int>(*threshold);
    plan.mode = reader.mode(document);
    readDuration(document, reader, plan);
    readConditions(document, reader, plan);
    readActions(document, reader, plan);
    return reader.good() ? std::make_optional(std::move(plan)) : std::nullopt;
}

std::vector<int> portsNamedBy(const Plan& plan) {
    std::vector<int> pids;
    for (const Condition& condition : plan.conditions)
        pids.insert(pids.end(), condition.inputs.begin(), condition.inputs.end());
    for (const Action& action : plan.actions)
        pids.insert(pids.end(), action.outputs.begin(), action.outputs.end());
    return pids;
}

std::string missingPortFault(const Plan& plan, const DevicePorts& ports) {
    for (const Condition& condition : plan.conditions) {
        for (const int pid : condition.inputs) {
            if (ports.inputs.count(pid) == 0)
                return "采集输入 " + std::to_string(pid) + " 不存在!";
        }
    }
    for (const Action& action : plan.actions) {
        for (const int pid : action.outputs) {
            if (ports.outputs.count(pid) == 0)
                return "控制输出 " + std::to_string(pid) + " 不存在!";
        }
    }
    return {};
}

} // namespace ipncsdk::linkage
