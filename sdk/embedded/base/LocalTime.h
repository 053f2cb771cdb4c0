#pragma once

#include "base/Clock.h"

#include <string>

namespace ipncsdk {

/// The clock's time in the machine's time zone, written as `std::put_time` does with `format`.
std::string localTime(const Clock& clock, const char* format);
/// The same for a time in milliseconds since the beginning of 1970, UTC.
std::string localTime(long long milliseconds, const char* format);

} // namespace ipncsdk
