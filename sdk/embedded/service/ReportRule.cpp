#include "service/ReportRule.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace ipncsdk::service {

namespace {

constexpr std::size_t longestName = 64;
constexpr std::size_t longestTemplate = 500;
constexpr std::size_t mostMembers = 2000;

void fail(std::string& fault, const char* text) {
    if (fault.empty())
        fault = text;
}

/// A list of texts that may be missing; numbers are taken as their digits.
std::vector<std::string> textsAt(const Json& document, const char* key, std::string& fault) {
    std::vector<std::string> texts;
    const Json* list = memberAt(document, key);
    if (list == nullptr || list->is_null())
        return texts;
    if (!list->is_array() || list->size() > mostMembers) {
        fail(fault, "通知策略格式不正确!");
        return texts;
    }
    for (const Json& entry : *list) {
        if (entry.is_string())
            texts.push_back(entry.get<std::string>());
        else if (const auto number = integerOf(entry))
            texts.push_back(std::to_string(*number));
        else
            fail(fault, "通知策略格式不正确!");
    }
    return texts;
}

std::set<std::string> codesAt(const Json& document, const char* key, std::initializer_list<const char*> known,
                              std::string& fault) {
    std::set<std::string> codes;
    for (const std::string& code : textsAt(document, key, fault)) {
        if (std::find(known.begin(), known.end(), code) == known.end())
            fail(fault, "通知策略格式不正确!");
        codes.insert(code);
    }
    return codes;
}

std::set<int> levelsAt(const Json& document, const char* key, std::string& fault) {
    std::set<int> levels;
    for (const std::string& code : codesAt(document, key, {"1", "2", "3"}, fault))
        levels.insert(code.empty() ? 0 : code.front() - '0');
    return levels;
}

/// Templates may have several lines.
std::string templateAt(const Json& document, const char* key, std::string& fault) {
    const Json* member = memberAt(document, key);
    if (member == nullptr || member->is_null())
        return {};
    std::string text = textAt(document, key).value_or("");
    std::string oneLine = text;
    std::replace(oneLine.begin(), oneLine.end(), '\n', ' ');
    if (!member->is_string() || !isPlainText(oneLine, longestTemplate))
        fail(fault, "通知模板过长或包含不允许的字符!");
    return text;
}

bool flagOf(const Json& document, const char* key, bool otherwise, std::string& fault) {
    const Json* member = memberAt(document, key);
    if (member == nullptr || member->is_null())
        return otherwise;
    if (!member->is_boolean())
        fail(fault, "通知策略格式不正确!");
    return flagAt(document, key).value_or(otherwise);
}

} // namespace

std::optional<ReportRule> parseReportRule(const Json& document, std::string& fault) {
    fault.clear();
    ReportRule rule;
    const std::string name = textAt(document, "name").value_or("");
    if (name.find_first_not_of(' ') == std::string::npos || !isPlainText(name, longestName))
        fail(fault, "通知策略名称不能为空!");
    rule.self = flagOf(document, "selfuse", false, fault);
    rule.phones = textsAt(document, "recvphones", fault);
    if (!std::all_of(rule.phones.begin(), rule.phones.end(),
                     [](const std::string& each) { return isPhoneNumber(each); }))
        fail(fault, "通知策略格式不正确!");
    if (!rule.self && rule.phones.empty())
        fail(fault, "接收人选择不能为空!");
    rule.ipncids = textsAt(document, "ipncids", fault);
    if (rule.ipncids.empty())
        fail(fault, "关注设备选择不能为空!");
    rule.types = codesAt(document, "reporttype", {thresholdReport, offlineReport, otherReport}, fault);
    if (rule.types.empty())
        fail(fault, "通知类型选择不能为空!");
    rule.modes = codesAt(document, "reportmode", {smsMode, appMode}, fault);
    if (rule.modes.empty())
        fail(fault, "通知方式选择不能为空!");
    rule.smsLevels = levelsAt(document, "smslevel", fault);
    rule.appLevels = levelsAt(document, "applevel", fault);
    if (rule.smsLevels.empty() && rule.appLevels.empty())
        fail(fault, "短信接收等级和APP接收等级至少选择一种!");
    rule.smsTemplate = templateAt(document, "smstemplate", fault);
    rule.appTemplate = templateAt(document, "apptemplate", fault);
    rule.enabled = flagOf(document, "enable", true, fault);
    return fault.empty() ? std::make_optional(std::move(rule)) : std::nullopt;
}

std::string fillTemplate(const std::string& text, const TemplateValues& values) {
    const std::array all = {&values.device, &values.plan,  &values.level, &values.sensor,
                            &values.input,  &values.value, &values.unit};
    constexpr std::size_t length = 4; // "($1)"
    std::string filled;
    for (std::size_t at = 0; at < text.size();) {
        const bool mark = text.compare(at, 2, "($") == 0 && at + length <= text.size() && text[at + 3] == ')';
        const int number = mark ? text[at + 2] - '0' : 0;
        if (number >= 1 && static_cast<std::size_t>(number) <= all.size()) {
            filled += *all[static_cast<std::size_t>(number - 1)];
            at += length;
        } else {
            filled += text[at++];
        }
    }
    return filled;
}

} // namespace ipncsdk::service
