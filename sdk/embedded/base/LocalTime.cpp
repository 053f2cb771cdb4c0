#include "base/LocalTime.h"

#include <chrono>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace ipncsdk {

std::string localTime(const Clock& clock, const char* format) {
    const std::time_t now = std::chrono::system_clock::to_time_t(clock.now());
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

} // namespace ipncsdk
