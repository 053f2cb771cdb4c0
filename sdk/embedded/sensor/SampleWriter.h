#pragma once

#include "base/Clock.h"
#include "sensor/Reading.h"
#include "sensor/SampleFile.h"
#include "sensor/SampleRetention.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace ipncsdk::sensor {

/// Stores readings, many at a time, on a thread of its own. Thread-safe.
///
/// A batch takes a page of the file for each input, so it waits until there is some more where writing takes long;
/// what waits is stored first when somebody wants to read (`flush`).
/// What the file refuses (a full disk, another process for too long) is tried again.
class SampleWriter final : public ReadingSink {
public:
    SampleWriter(std::filesystem::path file, const Clock& clock, SampleRetention retention);
    /// Stores what waits.
    ~SampleWriter() override;

    void take(const std::vector<Reading>& readings) override;
    /// Inputs and outputs of which only the newest value is kept.
    void setUnkept(std::set<int> pids);
    /// Deletes everything of inputs and outputs that are in the file and not in `known`.
    void keepOnly(std::set<int> known);
    /// Comes back when everything taken before is in the file, or could not be stored.
    void flush();

    /// Deletes what is too old and brings samples of past days together. Returns whether there was any.
    static bool tidy(SampleFile& file, std::int64_t now, const SampleRetention& retention);

private:
    void write();
    void store(SampleFile& file, const std::vector<Reading>& readings, const std::set<int>& unkept);
    /// What the file refused waits for the next time. The caller holds the mutex.
    void putBack(std::vector<Reading> batch, std::optional<std::set<int>> known);
    static void removeUnknown(SampleFile& file, const std::set<int>& known);

    const std::filesystem::path path_;
    const Clock& clock_;
    const SampleRetention retention_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::condition_variable stored_;
    // Guarded by mutex_.
    std::vector<Reading> waiting_;
    std::set<int> unkept_;
    std::optional<std::set<int>> known_; ///< set: is to be looked at
    std::uint64_t taken_ = 0;            ///< readings ever taken
    std::uint64_t done_ = 0;             ///< of them those that wait no more
    std::uint64_t failures_ = 0;         ///< times that the file refused
    bool hurry_ = false;
    bool stopping_ = false;

    std::thread thread_;
};

} // namespace ipncsdk::sensor
