#pragma once

#include "base/Clock.h"

#include <cstdint>
#include <ctime>
#include <string>

namespace ipncsdk {

/// The clock's time in the machine's time zone, written as `std::put_time` does with `format`.
std::string localTime(const Clock& clock, const char* format);
/// The same for a time in milliseconds since the beginning of 1970, UTC.
std::string localTime(long long milliseconds, const char* format);
std::string written(const std::tm& time, const char* format);

/// Seconds since the beginning of 1970, UTC.
std::int64_t secondsOf(std::chrono::system_clock::time_point time);
/// What the machine's clocks show at a time in seconds, and back as `std::mktime` does it: that brings the fields
/// into their ranges, and is -1 where there is no such time. Both go beyond 2038 also where `std::time_t` does not.
std::tm localTimeOf(std::int64_t seconds);
std::int64_t secondsOf(std::tm& local);

} // namespace ipncsdk
