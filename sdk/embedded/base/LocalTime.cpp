#include "base/LocalTime.h"

#include <chrono>
#include <iomanip>
#include <locale>
#include <sstream>

namespace ipncsdk {

std::string localTime(const Clock& clock, const char* format) {
    return written(localTimeOf(secondsOf(clock.now())), format);
}

std::string localTime(long long milliseconds, const char* format) {
    return written(localTimeOf(milliseconds / 1000), format);
}

std::string written(const std::tm& time, const char* format) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&time, format);
    return text.str();
}

std::int64_t secondsOf(std::chrono::system_clock::time_point time) {
    return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

std::tm localTimeOf(std::int64_t seconds) {
    std::tm local{};
#ifdef _WIN32
    const __time64_t time = seconds;
    if (_localtime64_s(&local, &time) != 0)
        local = {};
#else
    const std::time_t time = seconds;
    localtime_r(&time, &local);
#endif
    return local;
}

std::int64_t secondsOf(std::tm& local) {
#ifdef _WIN32
    return _mktime64(&local);
#else
    return std::mktime(&local);
#endif
}

} // namespace ipncsdk
