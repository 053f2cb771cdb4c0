#pragma once

#include "api/AlarmBook.h"
#include "api/OutputDesk.h"
#include "api/SensorLog.h"
#include "base/Clock.h"
#include "device/NetworkCameras.h"
#include "linkage/FaultWatch.h"
#include "linkage/LinkageEngine.h"
#include "sensor/Reading.h"
#include "store/Database.h"
#include "store/DatabaseFile.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// Evaluates linkage plans on what the sensors read, and sees devices go: on a thread of its own, so that no reader
/// of sensors waits for the store or for an output.
///
/// It works in the one process that reads the sensors of a store, from `attach` on; in all others it rests.
class AlarmDesk final : public sensor::ReadingSink {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const Clock& clock;
        AlarmBook& book;
        std::filesystem::path datFolder;                ///< of the files of sensor data
        std::unique_ptr<store::ChangeProbe> changes;    ///< of the store; null: plans are read once alone
        std::function<void(const std::string&)> notice; ///< a sentence for the user
    };

    explicit AlarmDesk(Parts parts);
    ~AlarmDesk() override;

    /// This process reads the sensors from now on, and switches outputs through `outputs`, which outlives `stop`. Any
    /// thread.
    void attach(sensor::OutputWriter& outputs);

    void take(const std::vector<sensor::Reading>& readings) override;
    /// Has it look at plans and devices again soon. Any thread.
    void wake();
    /// Switches off what plans have switched on and ends the threads. Alarms that stand in no store then are lost.
    void stop();

private:
    using Steady = std::chrono::steady_clock::time_point;
    struct Batch {
        std::vector<sensor::Reading> readings;
        Steady arrived;
    };
    /// A device as alarms name it.
    struct Device {
        std::string name;
        bool online = true;
        linkage::DevicePorts ports;
        std::map<std::int64_t, linkage::Plan> plans;
    };

    using PlanRows = std::map<std::string, std::vector<store::LinkPlan>>;

    void work();
    /// The time until something is due, at most a second.
    [[nodiscard]] std::chrono::milliseconds pause() const;
    void turn(const std::vector<Batch>& batches, bool woken);
    /// Reads devices and plans again when the store has changed, soon or, with `atOnce`, now.
    void readStore(bool atOnce);
    void adopt(std::vector<store::LinkedDeviceRow> rows, PlanRows plans);
    /// Reads one device's plans.
    static void parsePlans(const std::vector<store::LinkPlan>& rows, Device& device);
    /// Does and says what the engine wants.
    void carryOut(Steady now);
    void lookAtDevices(Steady now);
    void lookAtInputs(const std::vector<sensor::Reading>& readings, Steady now);
    void raise(const linkage::Raised& raised, Steady now);
    void raiseFault(const std::string& ipncid, const char* type, int input);
    /// Puts what was raised into the store; what it refuses stays for the next time.
    void flush();
    void tidyUp(Steady now);

    const Parts parts_;
    OutputDesk outputs_;

    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_.
    std::vector<Batch> batches_;
    bool attached_ = false;
    bool woken_ = false;
    bool stopping_ = false;

    // All that follows belongs to the thread.
    SensorLog log_;
    linkage::LinkageEngine engine_;
    linkage::FaultWatch<std::string> offline_{std::chrono::seconds(10)};
    linkage::FaultWatch<int> abnormal_{std::chrono::seconds(60)};
    std::map<std::string, Device> devices_;
    std::map<int, std::string> deviceOfInput_;
    std::vector<store::LinkedDeviceRow> rows_; ///< as they were read last
    PlanRows planRows_;
    bool isStale_ = true;          ///< the store has changed since then
    Steady readAt_{};              ///< by the machine's clock
    std::vector<NewAlarm> raised_; ///< that stand in no store yet
    Steady tidied_{};
    std::thread thread_;
};

} // namespace ipncsdk::api
