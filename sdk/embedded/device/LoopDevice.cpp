#include "device/LoopDevice.h"

#include <algorithm>
#include <utility>

namespace ipncsdk::device {

namespace {

using Phase = UpgradeState::Phase;

constexpr std::chrono::seconds restartTime{3};
constexpr std::chrono::seconds fetchTime{3};
constexpr std::chrono::seconds writeTime{3};

int percentOf(LoopHead::Moment begin, LoopHead::Moment now, std::chrono::seconds whole) {
    return static_cast<int>(std::clamp<long long>(100 * (now - begin) / whole, 0, 100));
}

} // namespace

LoopDevice::LoopDevice(std::shared_ptr<const Clock> clock, Exhibit exhibit)
    : clock_(std::move(clock))
    , exhibit_(std::move(exhibit))
    , head_(clock_)
    , upAt_(clock_->steadyNow()) {}

media::LoopControl::State LoopDevice::now() const {
    {
        const std::lock_guard lock(mutex_);
        if (!isUp())
            return {false, {}, 0};
    }
    return {true, head_.view(), exhibit_ ? exhibit_() : 0};
}

void LoopDevice::restart() {
    const std::lock_guard lock(mutex_);
    upAt_ = std::max(upAt_, clock_->steadyNow() + restartTime);
    head_.reset();
}

void LoopDevice::receive(std::string version) {
    const std::lock_guard lock(mutex_);
    received_ = std::move(version);
}

std::optional<std::string> LoopDevice::received() const {
    const std::lock_guard lock(mutex_);
    return received_;
}

bool LoopDevice::upgrade(const std::string& version, bool fetched) {
    const std::lock_guard lock(mutex_);
    const Phase phase = upgrade_ ? stateOf(*upgrade_).phase : Phase::None;
    if (phase == Phase::Download || phase == Phase::Write || phase == Phase::Restart)
        return false;
    const auto now = clock_->steadyNow();
    upgrade_ = Upgrade{version, fetched ? now : now + fetchTime, now, false};
    return true;
}

UpgradeState LoopDevice::upgradeState() const {
    const std::lock_guard lock(mutex_);
    return upgrade_ ? stateOf(*upgrade_) : UpgradeState();
}

LoopDevice::Change LoopDevice::takeChange() {
    const std::lock_guard lock(mutex_);
    Change change;
    if (upgrade_ && !upgrade_->version.empty() && !upgrade_->told && writtenAt(*upgrade_) <= clock_->steadyNow()) {
        upgrade_->told = true;
        change.version = upgrade_->version;
        upAt_ = clock_->steadyNow() + restartTime;
        head_.reset();
    }
    if (const bool up = isUp(); up != toldUp_) {
        toldUp_ = up;
        change.reachable = up;
    }
    return change;
}

bool LoopDevice::isBusy() const {
    const std::lock_guard lock(mutex_);
    return isUp() != toldUp_ || !isUp() || (upgrade_ && !upgrade_->version.empty() && !upgrade_->told);
}

bool LoopDevice::isUp() const {
    return clock_->steadyNow() >= upAt_;
}

UpgradeState LoopDevice::stateOf(const Upgrade& upgrade) const {
    const auto now = clock_->steadyNow();
    if (now < upgrade.fetchedAt)
        return {Phase::Download, percentOf(upgrade.begin, now, fetchTime)};
    if (upgrade.version.empty())
        return {Phase::Error, 0};
    if (!upgrade.told)
        return {Phase::Write, percentOf(upgrade.fetchedAt, now, writeTime)};
    if (!isUp())
        return {Phase::Restart, 100 - percentOf(now, upAt_, restartTime)};
    return {Phase::Ok, 100};
}

LoopHead::Moment LoopDevice::writtenAt(const Upgrade& upgrade) {
    return upgrade.fetchedAt + writeTime;
}

LoopDevices::LoopDevices(std::shared_ptr<const Clock> clock, ExhibitOf exhibitOf)
    : clock_(std::move(clock))
    , exhibitOf_(std::move(exhibitOf)) {}

std::shared_ptr<LoopDevice> LoopDevices::of(const std::string& ipncid) {
    const std::lock_guard lock(mutex_);
    auto& device = devices_[ipncid];
    if (!device)
        device = std::make_shared<LoopDevice>(clock_, exhibitOf_ ? exhibitOf_(ipncid) : nullptr);
    return device;
}

std::map<std::string, std::shared_ptr<LoopDevice>> LoopDevices::all() const {
    const std::lock_guard lock(mutex_);
    return devices_;
}

bool LoopDevices::isBusy() const {
    const auto devices = all();
    return std::any_of(devices.begin(), devices.end(), [](const auto& entry) { return entry.second->isBusy(); });
}

} // namespace ipncsdk::device
