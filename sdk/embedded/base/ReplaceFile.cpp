#include "base/ReplaceFile.h"

#include <chrono>
#include <thread>

namespace ipncsdk {

namespace {

constexpr int tries = 25;
constexpr std::chrono::milliseconds pause{20};

/// What passes when the one who has the file open closes it.
bool mayPass([[maybe_unused]] const std::error_code& error) {
#ifdef _WIN32
    constexpr int accessDenied = 5;
    constexpr int sharingViolation = 32;
    return error.value() == accessDenied || error.value() == sharingViolation ||
           error == std::errc::permission_denied;
#else
    return false;
#endif
}

} // namespace

std::error_code replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code error;
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (attempt > 0)
            std::this_thread::sleep_for(pause);
        std::filesystem::rename(from, to, error);
        if (!error || !mayPass(error))
            break;
    }
    return error;
}

} // namespace ipncsdk
