#pragma once

#include "TestSdk.h"
#include "api/AlarmDesk.h"
#include "store/Notices.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::test {

inline constexpr auto pumps = "CAM0052";
inline constexpr auto owner = "13800138000";
inline constexpr auto colleague = "13700137000"; ///< a friend who may see the pumps

/// A plan, but for its device and name, that looks at the pressure of the pumps.
extern const Json onPressure;

/// Outputs as they were written, in order.
class Outputs final : public sensor::OutputWriter {
public:
    ServiceCode write(int pid, double value) override {
        const std::lock_guard lock(mutex_);
        written_ += std::to_string(pid) + (value > 0 ? "+" : "-");
        return ServiceCode::Done;
    }
    std::string written() {
        const std::lock_guard lock(mutex_);
        return written_;
    }

private:
    std::mutex mutex_;
    std::string written_;
};

/// The process that reads the sensors of an SDK's store, played by the test. Ends before its SDK does.
class Plant final {
public:
    /// `notices`: notices for apps go to this broker.
    explicit Plant(TestSdk& sdk, std::optional<device::NoticesConfig> notices = std::nullopt);
    ~Plant();
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    void read(int pid, double value, bool normal = true) { desk_->take({{pid, sdk_.clock->now(), value, normal}}); }
    void read(const std::vector<sensor::Reading>& readings) { desk_->take(readings); }
    api::AlarmDesk& desk() { return *desk_; }
    void stop() { desk_->stop(); }
    /// Text messages that left, as "PHONE TEXT".
    [[nodiscard]] std::vector<std::string> messages() const;

    Outputs outputs;

private:
    TestSdk& sdk_;
    Received notices_;
    store::Database database_;
    device::NetworkCameras cameras_;
    service::Outbox outbox_;
    std::unique_ptr<service::NoticeBroker> broker_;
    std::unique_ptr<api::AlarmBook> book_;
    std::unique_ptr<api::AlarmDesk> desk_;
};

/// A started SDK whose pumps have thresholds and no plans or rules but those that a test makes.
struct AlarmWorld {
    AlarmWorld();

    /// The plan's id; -1 when it is not taken.
    long long addPlan(Json plan);
    Json addRule(Json rule);
    Json person() { return sdk.askAccount("getpersioninfo").at("resp").at("persioninfo"); }
    Json records() {
        return sdk.askAccount("getsmsrecords", {{"cmd", "next"}, {"recid", 0}}).at("resp").at("records");
    }
    /// Raises an alarm of the one plan on 1001, and waits until clients are told.
    void raise(Plant& plant, double value);

    TestSdk sdk;
    bool started = false;
};

} // namespace ipncsdk::test
