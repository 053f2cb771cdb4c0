#include "api/AlarmDesk.h"

#include "api/AlarmTexts.h"
#include "base/Log.h"
#include "linkage/PlanParser.h"
#include "service/LinkageRecords.h"

#include <algorithm>
#include <utility>

namespace ipncsdk::api {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds longestPause{1000};
constexpr milliseconds shortestReadPause{250};
constexpr std::chrono::hours tidyPause{1};
/// More than this wait for a store only when that has been out of reach for long.
constexpr std::size_t mostWaiting = 1'000'000;

} // namespace

AlarmDesk::AlarmDesk(Parts parts)
    : parts_(std::move(parts))
    , log_(parts_.datFolder)
    , thread_([this] { work(); }) {}

AlarmDesk::~AlarmDesk() {
    stop();
}

void AlarmDesk::attach(sensor::OutputWriter& outputs) {
    outputs_.use(outputs);
    {
        const std::lock_guard lock(mutex_);
        attached_ = true;
    }
    wake();
}

void AlarmDesk::take(const std::vector<sensor::Reading>& readings) {
    {
        const std::lock_guard lock(mutex_);
        if (!attached_ || stopping_)
            return;
        batches_.push_back({readings, parts_.clock.steadyNow()});
    }
    changed_.notify_one();
}

void AlarmDesk::wake() {
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
    }
    changed_.notify_one();
}

void AlarmDesk::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable())
        thread_.join();
    outputs_.stop();
}

void AlarmDesk::work() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const auto due = attached_ ? pause() : longestPause;
        changed_.wait_for(lock, due, [this] { return stopping_ || woken_ || !batches_.empty(); });
        const bool woken = std::exchange(woken_, false);
        const std::vector<Batch> batches = std::exchange(batches_, {});
        if (!attached_)
            continue;
        lock.unlock();
        try {
            turn(batches, woken);
        } catch (const std::exception& error) {
            logLine(std::string("linkage failed: ") + error.what());
        }
        lock.lock();
    }
    lock.unlock();
    engine_.setDevices({}, parts_.clock.steadyNow());
    carryOut(parts_.clock.steadyNow());
    flush();
    log_.stop();
}

milliseconds AlarmDesk::pause() const {
    const Steady now = parts_.clock.steadyNow();
    milliseconds shortest = longestPause;
    for (const auto& due : {engine_.nextDue(), log_.nextDue()}) {
        if (due)
            shortest =
                std::min(shortest, std::chrono::ceil<milliseconds>(std::max(*due - now, Steady::duration::zero())));
    }
    return shortest;
}

void AlarmDesk::turn(const std::vector<Batch>& batches, bool woken) {
    const Steady now = parts_.clock.steadyNow();
    readStore(woken);
    for (const Batch& batch : batches) {
        log_.take(batch.readings);
        lookAtInputs(batch.readings, batch.arrived);
        engine_.take(batch.readings, batch.arrived);
    }
    engine_.advance(now);
    lookAtDevices(now);
    carryOut(now);
    log_.advance(now);
    flush();
    tidyUp(now);
}

void AlarmDesk::carryOut(Steady now) {
    const linkage::LinkageEffects effects = engine_.takeEffects();
    for (const linkage::Switching& change : effects.switches)
        outputs_.write(change.output, change.on);
    for (const std::string& line : effects.logLines)
        logLine(line);
    for (const std::string& text : effects.notices)
        parts_.notice(text);
    for (const linkage::Raised& raised : effects.alarms)
        raise(raised, now);
}

void AlarmDesk::readStore(bool atOnce) {
    // Alarms that are entered change the store, too, and a flood of them must not have it read each time.
    isStale_ = (parts_.changes && parts_.changes->changed()) || isStale_;
    const Steady now = std::chrono::steady_clock::now();
    if (!isStale_ || (!atOnce && now - readAt_ < shortestReadPause))
        return;
    std::vector<store::LinkedDeviceRow> rows;
    PlanRows plans;
    const ServiceCode code = parts_.database.read("read linkage plans", [&](soci::session& sql) {
        rows = store::linkedDevices(sql);
        plans = store::allPlans(sql);
        return ServiceCode::Done;
    });
    readAt_ = now;
    if (code != ServiceCode::Done)
        return;
    isStale_ = false;
    if (rows != rows_ || plans != planRows_)
        adopt(std::move(rows), std::move(plans));
}

void AlarmDesk::parsePlans(const std::vector<store::LinkPlan>& rows, Device& device) {
    for (const store::LinkPlan& row : rows) {
        std::string fault;
        auto plan = linkage::parsePlan(Json::parse(row.document, nullptr, false), fault);
        if (!plan) {
            logLine("linkage plan " + std::to_string(row.id) + " can't be evaluated");
            continue;
        }
        plan->id = row.id;
        device.plans[row.id] = std::move(*plan);
    }
}

void AlarmDesk::adopt(std::vector<store::LinkedDeviceRow> rows, PlanRows plans) {
    const std::map<std::string, Device> before = std::exchange(devices_, {});
    deviceOfInput_.clear();
    std::map<int, std::string> logged;
    std::vector<linkage::LinkedDevice> linked;
    for (const store::LinkedDeviceRow& row : rows) {
        Device device{row.name, row.online, service::portsOf(row.interfaces, row.extend), {}};
        parsePlans(plans[row.ipncid], device);
        linkage::LinkedDevice evaluated{row.ipncid, device.ports, {}};
        for (const auto& [id, plan] : device.plans)
            evaluated.plans.push_back(plan);
        for (const auto& [pid, input] : device.ports.inputs) {
            deviceOfInput_[pid] = row.ipncid;
            if (!device.plans.empty())
                logged[pid] = row.ipncid;
        }
        // Without plans, too: one that is made later finds what was read.
        if (!device.ports.inputs.empty())
            linked.push_back(std::move(evaluated));
        devices_[row.ipncid] = std::move(device);
    }
    for (const auto& [ipncid, device] : before) {
        if (devices_.count(ipncid) == 0)
            offline_.forget(ipncid);
        for (const auto& [pid, input] : device.ports.inputs) {
            if (deviceOfInput_.count(pid) == 0)
                abnormal_.forget(pid);
        }
    }
    log_.setInputs(std::move(logged));
    engine_.setDevices(linked, parts_.clock.steadyNow());
    rows_ = std::move(rows);
    planRows_ = std::move(plans);
}

void AlarmDesk::lookAtDevices(Steady now) {
    for (const auto& [ipncid, device] : devices_)
        offline_.note(ipncid, device.online && parts_.cameras.isReachable(ipncid), now);
    for (const std::string& ipncid : offline_.due(now))
        raiseFault(ipncid, service::offlineReport, 0);
    for (const int pid : abnormal_.due(now)) {
        if (const auto device = deviceOfInput_.find(pid); device != deviceOfInput_.end())
            raiseFault(device->second, service::otherReport, pid);
    }
}

void AlarmDesk::lookAtInputs(const std::vector<sensor::Reading>& readings, Steady now) {
    for (const sensor::Reading& reading : readings) {
        if (deviceOfInput_.count(reading.pid) > 0)
            abnormal_.note(reading.pid, reading.normal, now);
    }
}

void AlarmDesk::raise(const linkage::Raised& raised, Steady now) {
    const auto device = devices_.find(raised.ipncid);
    if (device == devices_.end())
        return;
    const auto plan = device->second.plans.find(raised.planId);
    const auto input = device->second.ports.inputs.find(raised.input);
    if (plan == device->second.plans.end() || input == device->second.ports.inputs.end())
        return;
    const auto time = raised.readAt.value_or(parts_.clock.now());
    const std::string savelog = log_.begin(raised.ipncid, time, now);
    raised_.push_back(thresholdAlarm({raised, plan->second, input->second, device->second.name, savelog, time}));
}

void AlarmDesk::raiseFault(const std::string& ipncid, const char* type, int input) {
    const auto device = devices_.find(ipncid);
    if (device == devices_.end())
        return;
    const auto port = device->second.ports.inputs.find(input);
    raised_.push_back(
        faultAlarm({ipncid, device->second.name, type,
                    port == device->second.ports.inputs.end() ? nullptr : &port->second, parts_.clock.now()}));
}

void AlarmDesk::flush() {
    if (raised_.empty())
        return;
    if (parts_.book.enter(raised_)) {
        raised_.clear();
    } else if (raised_.size() > mostWaiting) {
        logLine("alarms are dropped: the store has been out of reach for too long");
        raised_.erase(raised_.begin(), raised_.end() - mostWaiting);
    }
}

void AlarmDesk::tidyUp(Steady now) {
    if (tidied_ != Steady() && now - tidied_ < tidyPause)
        return;
    tidied_ = now;
    log_.removeOld();
    parts_.book.removeOld();
}

} // namespace ipncsdk::api
