#pragma once

#include "api/VideoHub.h"
#include "base/Clock.h"
#include "device/NetworkCameras.h"
#include "sensor/Acquisition.h"
#include "sensor/AcquisitionLock.h"
#include "sensor/LatestValues.h"
#include "sensor/OrderBook.h"
#include "sensor/SampleWriter.h"
#include "store/Boards.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// The boards of all devices of the store, while the engine lives.
///
/// One process on a store holds the lock and reads the boards (`Acquisition`); it stores what was read and does what
/// other processes want switched. The others take the newest values from the file of samples. When the first one
/// ends, the next takes its place within a second. A thread of its own looks after all that. Thread-safe after
/// `start`.
class SensorService final : public sensor::OutputWriter {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const store::StoreKey& key;
        VideoHub& hub;
        const Clock& clock;
        sensor::LatestValues& latest;
        std::filesystem::path root;
        std::filesystem::path storeFile;
        sensor::SampleRetention retention;
        /// What has changed; called on the service's thread, at most twice a second.
        std::function<void(std::vector<sensor::Reading> changed)> changed;
        /// This process reads the boards from now on; called on the service's thread.
        std::function<void()> acquires;
    };

    explicit SensorService(Parts parts);
    /// As `stop`.
    ~SensorService() override;

    /// Before `start`: gets all readings of this process, while it reads the boards. Outlives this.
    void join(sensor::ReadingSink& sink) { sinks_.push_back(&sink); }
    /// Begins; returns a sentence for the user when something is wrong, else an empty text.
    std::string start();
    void stop();

    /// The boards in the store have changed.
    void boardsChanged();

    ServiceCode write(int pid, double value) override;
    /// Reads an input now; nothing when it is not known. A process that does not read the boards has it done by the
    /// one that does.
    std::optional<sensor::Reading> readNow(int pid);
    /// A value of an input that is measured elsewhere.
    ServiceCode hand(int pid, double raw);
    /// Everything that was read is in the file when this returns, as far as this process has read it.
    void flush();
    [[nodiscard]] const std::filesystem::path& sampleFile() const { return samples_; }
    [[nodiscard]] bool isStopping() const { return stopping_; }

private:
    /// The boards of the store as they are read.
    struct Snapshot {
        std::vector<sensor::SensorBoard> boards;
        std::map<std::string, store::AccountId> owners; ///< of devices
        std::map<int, store::AccountId> usable;         ///< owners of inputs and outputs
        std::set<int> unkept;                           ///< ports without samples
        std::set<int> ports;
    };

    void keep();
    void lookForLock();
    void begin();
    void end();
    /// True when the boards are not what they were.
    bool loadBoards();
    void applyBoards();
    void readLatest(sensor::SampleFile& file);
    void serveOrders(sensor::SampleFile& file);
    ServiceCode carryOut(const sensor::OrderBook::Order& order);
    ServiceCode order(const sensor::OrderBook::Order& order);

    /// Null without the lock. Waits until the boards are read as the store has them, as far as `boardsChanged` told.
    std::shared_ptr<sensor::Acquisition> acquisition();
    std::optional<double> valueFor(const std::string& ipncid, int pid) const;
    std::unique_ptr<sensor::PictureSource> picturesOf(const std::string& ipncid);

    const Parts parts_;
    const std::filesystem::path samples_;
    std::vector<sensor::ReadingSink*> sinks_;
    sensor::AcquisitionLock lock_; ///< belongs to the thread, as `seen_` and `seenReachable_`
    std::vector<store::DeviceBoards> seen_;
    std::vector<bool> seenReachable_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::shared_ptr<sensor::SampleWriter> writer_;     ///< guarded by mutex_; null without the lock
    std::shared_ptr<sensor::Acquisition> acquisition_; ///< guarded by mutex_; null without the lock
    std::shared_ptr<const Snapshot> snapshot_;         ///< guarded by mutex_
    std::uint64_t changes_ = 1;                        ///< of boards, as told, and the start; guarded by mutex_
    std::uint64_t applied_ = 0;                        ///< how many of them are in force; guarded by mutex_
    std::condition_variable appliedAll_;
    std::atomic<bool> stopping_{false};
    std::thread thread_;
};

} // namespace ipncsdk::api
