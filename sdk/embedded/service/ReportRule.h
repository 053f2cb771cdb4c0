#pragma once

#include "base/JsonText.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ipncsdk::service {

// The codes that rules and names of "getsysnames" share.
constexpr auto thresholdReport = "threshold";
constexpr auto offlineReport = "offline";
constexpr auto otherReport = "other";
constexpr auto smsMode = "sms";
constexpr auto appMode = "app";

/// Who is told of which alarms, and how.
struct ReportRule {
    bool enabled = true;
    bool self = false;               ///< the account's own number is a receiver
    std::vector<std::string> phones; ///< of friends; who is a friend no more gets nothing
    std::vector<std::string> ipncids;
    std::set<std::string> types;
    std::set<std::string> modes;
    std::set<int> smsLevels; ///< of alarms that have a level
    std::set<int> appLevels;
    std::string smsTemplate; ///< empty: the alarm's own text
    std::string appTemplate;
};

/// Reads a rule as clients send it. When it is not of the form nothing comes back, and `fault` says why in a sentence
/// for the user.
std::optional<ReportRule> parseReportRule(const Json& document, std::string& fault);

/// What templates can name, in the order of their numbers, from "($1)".
struct TemplateValues {
    std::string device;
    std::string plan;
    std::string level;
    std::string sensor;
    std::string input;
    std::string value;
    std::string unit;
};
/// Replaces "($1)" to "($7)". What looks alike and is none of them stays as it is, also inside the values.
std::string fillTemplate(const std::string& text, const TemplateValues& values);

} // namespace ipncsdk::service
