#pragma once

#include "api/AlarmBook.h"
#include "linkage/LinkageEngine.h"

#include <chrono>
#include <string>

namespace ipncsdk::api {

/// An alarm that a plan raised, and what it is about.
struct ThresholdFacts {
    const linkage::Raised& raised;
    const linkage::Plan& plan;
    const linkage::Input& input;
    const std::string& deviceName;
    const std::string& savelog;
    std::chrono::system_clock::time_point time;
};
/// The alarm with its message to clients and what people are told.
NewAlarm thresholdAlarm(const ThresholdFacts& facts);

/// An alarm without a plan: a device is gone, or an input does not answer.
struct FaultFacts {
    const std::string& ipncid;
    const std::string& deviceName;
    const char* type;            ///< as rules name it
    const linkage::Input* input; ///< null: the device itself
    std::chrono::system_clock::time_point time;
};
NewAlarm faultAlarm(const FaultFacts& facts);

/// A measured value as people read it: six digits that count, no trailing zeros.
std::string valueText(double value);

} // namespace ipncsdk::api
