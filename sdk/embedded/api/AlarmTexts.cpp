#include "api/AlarmTexts.h"

#include "base/LocalTime.h"

#include <array>
#include <cstdio>

namespace ipncsdk::api {

namespace {

struct LevelText {
    const char* inContent;
    const char* inTemplate; ///< as the rules' levels are shown
};

constexpr std::array levelTexts = {LevelText{"一级阈值", "一级阀值"}, LevelText{"二级阈值", "二级阀值"},
                                   LevelText{"三级阈值", "三级阀值"}};

long long millisecondsOf(std::chrono::system_clock::time_point time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

/// What both kinds of alarms have in common.
NewAlarm alarmOf(const std::string& ipncid, long long time, const std::string& content, Json trigger) {
    Json alarm = {{"ipncid", ipncid}, {"datetime", localTime(time, "%Y-%m-%d %H:%M:%S")}};
    if (!trigger.is_null())
        alarm["trigger"] = std::move(trigger);
    NewAlarm made;
    made.row.ipncid = ipncid;
    made.row.madeAt = time;
    made.row.message = toText({{"type", "trigger"}, {"content", content}, {"alarm", std::move(alarm)}});
    made.news.ipncid = ipncid;
    made.news.text = content;
    made.news.madeAt = time;
    return made;
}

} // namespace

std::string valueText(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", value);
    return text.data();
}

NewAlarm thresholdAlarm(const ThresholdFacts& facts) {
    const linkage::Raised& raised = facts.raised;
    const LevelText& level = levelTexts.at(static_cast<std::size_t>(raised.level - 1));
    const std::string value = valueText(raised.value);
    const std::string content = facts.deviceName + " " + facts.input.name + " " + value + facts.input.unit +
                                (raised.low ? " 低于" : " 超过") + level.inContent;
    Json trigger = {{"linkplanid", raised.planId}, {"name", facts.plan.name},       {"threshold", raised.level},
                    {"input", raised.input},       {"inputname", facts.input.name}, {"value", raised.value},
                    {"unit", facts.input.unit}};
    if (!facts.savelog.empty())
        trigger["savelog"] = facts.savelog;
    NewAlarm made = alarmOf(raised.ipncid, millisecondsOf(facts.time), content, std::move(trigger));
    made.row.savelog = facts.savelog;
    made.reported = facts.plan.report;
    made.news.type = service::thresholdReport;
    made.news.level = raised.level;
    made.news.source = "plan:" + std::to_string(raised.planId);
    made.news.values = {facts.deviceName, facts.plan.name, level.inTemplate, facts.input.boardName,
                        facts.input.name, value,           facts.input.unit};
    return made;
}

NewAlarm faultAlarm(const FaultFacts& facts) {
    const bool ofInput = facts.input != nullptr;
    const std::string content =
        ofInput ? facts.deviceName + " " + facts.input->name + " 采集异常" : facts.deviceName + " 设备离线";
    NewAlarm made = alarmOf(facts.ipncid, millisecondsOf(facts.time), content, nullptr);
    made.reported = true;
    made.news.type = facts.type;
    made.news.source = ofInput ? "input:" + std::to_string(facts.input->pid) : "device:" + facts.ipncid;
    made.news.values.device = facts.deviceName;
    if (ofInput) {
        made.news.values.sensor = facts.input->boardName;
        made.news.values.input = facts.input->name;
        made.news.values.unit = facts.input->unit;
    }
    return made;
}

} // namespace ipncsdk::api
