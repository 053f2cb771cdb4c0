#pragma once

#include <array>
#include <cstddef>
#include <ctime>

namespace corvanta::platform {

/// The local time of a crash. localtime() takes locks and memory, which a signal handler may not, so the offsets from
/// UTC are looked up beforehand: those of the coming two years, with the moments at which they change.
class LocalTimeTable final {
public:
    /// Fills the table from `now` (seconds since 1970) with the zone that the process has then.
    void prepare(std::time_t now);

    /// Writes `time` as "yyyy_MM_dd_hhmmss" and ".DMP", with a zero at the end. Async-signal-safe.
    static constexpr std::size_t nameSize = sizeof("yyyy_MM_dd_hhmmss.DMP");
    void writeFileName(std::time_t time, std::array<char, nameSize>& name) const;

private:
    struct Period {
        std::time_t start = 0; ///< first second that has the offset
        long offset = 0;       ///< seconds east of UTC
    };

    std::array<Period, 12> periods_{}; ///< by rising start; the first counts for all time before, too
    std::size_t count_ = 0;
};

} // namespace corvanta::platform
