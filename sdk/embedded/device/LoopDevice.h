#pragma once

#include "device/LoopHead.h"
#include "media/loop/View.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::device {

/// How far the upgrade of a device has come.
struct UpgradeState {
    enum class Phase { None, Download, Write, Restart, Ok, Error };
    Phase phase = Phase::None;
    int percent = 0; ///< of the phase
};

/// What a loop camera does while the program runs: it moves, restarts and is upgraded, all of it by the clock.
/// Thread-safe. The camera that a program shows is its own: another program's may look elsewhere.
class LoopDevice final : public media::LoopControl {
public:
    /// What a camera is shown now (see `State`); callable from any thread.
    using Exhibit = std::function<int()>;

    /// Without an exhibit it is 0.
    explicit LoopDevice(std::shared_ptr<const Clock> clock, Exhibit exhibit = nullptr);
    LoopDevice(const LoopDevice&) = delete;
    LoopDevice& operator=(const LoopDevice&) = delete;

    [[nodiscard]] LoopHead& head() { return head_; }
    [[nodiscard]] State now() const override;

    /// Is gone for some seconds, and then back at its home view.
    void restart();
    /// Takes a file that was sent to it; `version` is what it holds, empty when it is no firmware.
    void receive(std::string version);
    /// What was received last; nothing when nothing was.
    [[nodiscard]] std::optional<std::string> received() const;
    /// Fetches (unless it was received) and writes a version, and restarts with it. An empty version fails when it is
    /// to be written. False while an upgrade is under way.
    bool upgrade(const std::string& version, bool fetched);
    [[nodiscard]] UpgradeState upgradeState() const;

    /// What has happened since the last call.
    struct Change {
        std::optional<bool> reachable;      ///< it went, or came back
        std::optional<std::string> version; ///< it has been written
    };
    Change takeChange();
    /// Something is still to happen, or to be taken.
    [[nodiscard]] bool isBusy() const;

private:
    struct Upgrade {
        std::string version;
        LoopHead::Moment fetchedAt;
        LoopHead::Moment begin;
        bool told = false; ///< its version has been taken
    };

    // These want mutex_ to be held.
    [[nodiscard]] bool isUp() const;
    [[nodiscard]] UpgradeState stateOf(const Upgrade& upgrade) const;
    [[nodiscard]] static LoopHead::Moment writtenAt(const Upgrade& upgrade);

    const std::shared_ptr<const Clock> clock_;
    const Exhibit exhibit_;
    LoopHead head_;
    mutable std::mutex mutex_;
    LoopHead::Moment upAt_; ///< it is away until then
    bool toldUp_ = true;
    std::optional<std::string> received_;
    std::optional<Upgrade> upgrade_;
};

/// The loop cameras that have done anything yet, by id. Thread-safe.
class LoopDevices final {
public:
    /// `exhibitOf` says what a camera is shown, or null for one that is always shown the same.
    using ExhibitOf = std::function<LoopDevice::Exhibit(const std::string& ipncid)>;

    explicit LoopDevices(std::shared_ptr<const Clock> clock, ExhibitOf exhibitOf = nullptr);
    LoopDevices(const LoopDevices&) = delete;
    LoopDevices& operator=(const LoopDevices&) = delete;

    std::shared_ptr<LoopDevice> of(const std::string& ipncid);
    [[nodiscard]] std::map<std::string, std::shared_ptr<LoopDevice>> all() const;
    [[nodiscard]] bool isBusy() const;
    [[nodiscard]] const Clock& clock() const { return *clock_; }

private:
    const std::shared_ptr<const Clock> clock_;
    const ExhibitOf exhibitOf_;
    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<LoopDevice>> devices_; ///< guarded by mutex_
};

} // namespace ipncsdk::device
