#include "base/LocalTime.h"

#include <chrono>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace ipncsdk {

namespace {

std::string written(std::time_t now, const char* format) {
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&local, format);
    return text.str();
}

} // namespace

std::string localTime(const Clock& clock, const char* format) {
    return written(std::chrono::system_clock::to_time_t(clock.now()), format);
}

std::string localTime(long long milliseconds, const char* format) {
    return written(static_cast<std::time_t>(milliseconds / 1000), format);
}

} // namespace ipncsdk
