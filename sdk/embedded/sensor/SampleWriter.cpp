#include "sensor/SampleWriter.h"

#include "base/Log.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ipncsdk::sensor {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds leastPause{250};
constexpr milliseconds longestPause{5000};
constexpr int pauseFactor = 4; ///< at most a fifth of the time is spent with writing
constexpr std::chrono::minutes tidyPause{10};
constexpr std::size_t mostWaiting = 2'000'000;
constexpr std::int64_t minute = 60'000;
constexpr std::int64_t day = std::int64_t{24} * 60 * minute;

std::vector<int> pidsWithSamples(SampleFile& file) {
    std::vector<int> pids;
    SampleFile::Statement next(file, "select min(pid) from samples where pid > ?1");
    for (std::int64_t last = 0;; next.again()) {
        if (!next.bind(last).step() || next.isNull(0))
            return pids;
        last = next.whole(0);
        pids.push_back(static_cast<int>(last));
    }
}

} // namespace

SampleWriter::SampleWriter(std::filesystem::path file, const Clock& clock, SampleRetention retention)
    : path_(std::move(file))
    , clock_(clock)
    , retention_(retention)
    , thread_([this] { write(); }) {}

SampleWriter::~SampleWriter() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void SampleWriter::take(const std::vector<Reading>& readings) {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() + readings.size() > mostWaiting) {
        logLine("the file of samples takes nothing; what waits is dropped");
        done_ += waiting_.size();
        waiting_.clear();
    }
    waiting_.insert(waiting_.end(), readings.begin(), readings.end());
    taken_ += readings.size();
}

void SampleWriter::setUnkept(std::set<int> pids) {
    const std::lock_guard lock(mutex_);
    unkept_ = std::move(pids);
}

void SampleWriter::keepOnly(std::set<int> known) {
    {
        const std::lock_guard lock(mutex_);
        known_ = std::move(known);
        hurry_ = true;
    }
    changed_.notify_all();
}

void SampleWriter::flush() {
    std::unique_lock lock(mutex_);
    const std::uint64_t mine = taken_;
    const std::uint64_t failures = failures_;
    hurry_ = true;
    changed_.notify_all();
    stored_.wait(lock, [&] { return done_ >= mine || failures_ != failures || stopping_; });
}

void SampleWriter::write() {
    std::unique_ptr<SampleFile> file;
    milliseconds pause = leastPause;
    auto nextTidy = std::chrono::steady_clock::now();
    bool ending = false;
    while (!ending) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, pause, [this] { return stopping_ || hurry_; });
        ending = stopping_;
        hurry_ = false;
        std::vector<Reading> batch = std::exchange(waiting_, {});
        auto known = std::exchange(known_, std::nullopt);
        const std::set<int> unkept = unkept_;
        lock.unlock();
        const auto begin = std::chrono::steady_clock::now();
        bool failed = false;
        try {
            if (!file)
                file = std::make_unique<SampleFile>(path_);
            store(*file, batch, unkept);
            if (known)
                removeUnknown(*file, *known);
            if (!ending && begin >= nextTidy) {
                nextTidy = begin + tidyPause;
                tidy(*file, toMilliseconds(clock_.now()), retention_);
            }
        } catch (const SampleError& error) {
            logLine(std::string("samples were not stored: ") + error.what());
            file.reset();
            failed = true;
        }
        const auto spent = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - begin);
        pause = std::clamp(spent * pauseFactor, leastPause, longestPause);
        lock.lock();
        if (failed)
            putBack(std::move(batch), std::move(known));
        else
            done_ += batch.size();
        stored_.notify_all();
    }
}

void SampleWriter::putBack(std::vector<Reading> batch, std::optional<std::set<int>> known) {
    ++failures_;
    if (batch.size() + waiting_.size() <= mostWaiting) {
        batch.insert(batch.end(), waiting_.begin(), waiting_.end());
        waiting_ = std::move(batch);
    } else {
        logLine("the file of samples takes nothing; the oldest that wait are dropped");
        done_ += batch.size();
    }
    if (!known_)
        known_ = std::move(known);
}

void SampleWriter::store(SampleFile& file, const std::vector<Reading>& readings, const std::set<int>& unkept) {
    if (readings.empty())
        return;
    file.change([&] {
        SampleFile::Statement insert(file,
                                     "insert or replace into samples (pid, time, value, state) values (?, ?, ?, ?)");
        std::map<int, const Reading*> newest;
        for (const Reading& reading : readings) {
            newest[reading.pid] = &reading;
            if (unkept.count(reading.pid) > 0)
                continue;
            insert.bind(std::int64_t{reading.pid}).bind(toMilliseconds(reading.time)).bind(reading.value);
            insert.bind(std::int64_t{reading.normal ? 1 : 0}).step();
            insert.again();
        }
        SampleFile::Statement latest(file,
                                     "insert or replace into latest (pid, time, value, state) values (?, ?, ?, ?)");
        for (const auto& [pid, reading] : newest) {
            latest.bind(std::int64_t{pid}).bind(toMilliseconds(reading->time)).bind(reading->value);
            latest.bind(std::int64_t{reading->normal ? 1 : 0}).step();
            latest.again();
        }
    });
}

void SampleWriter::removeUnknown(SampleFile& file, const std::set<int>& known) {
    std::set<int> there;
    {
        SampleFile::Statement all(file, "select pid from latest");
        while (all.step())
            there.insert(static_cast<int>(all.whole(0)));
    }
    for (const int pid : pidsWithSamples(file))
        there.insert(pid);
    for (const int pid : there) {
        if (known.count(pid) > 0)
            continue;
        file.change([&] {
            for (const char* statement : {"delete from samples where pid = ?", "delete from minutes where pid = ?",
                                          "delete from latest where pid = ?"})
                SampleFile::Statement(file, statement).bind(std::int64_t{pid}).step();
        });
    }
}

bool SampleWriter::tidy(SampleFile& file, std::int64_t now, const SampleRetention& retention) {
    const std::int64_t rawEnd = (now - retention.rawDays * day) / minute * minute;
    const std::int64_t minuteEnd = now - retention.minuteDays * day;
    bool any = false;
    for (const int pid : pidsWithSamples(file)) {
        file.change([&] {
            // A minute that was brought together before may get late readings.
            SampleFile::Statement gather(
                file,
                "insert into minutes (pid, time, mean, low, high, count)"
                " select pid, time / 60000 * 60000, avg(value), min(value), max(value), count(*) from samples"
                " where pid = ?1 and time < ?2 and state = 1 group by pid, time / 60000 * 60000"
                " on conflict (pid, time) do update set"
                " mean = (mean * count + excluded.mean * excluded.count) / (count + excluded.count),"
                " low = min(low, excluded.low), high = max(high, excluded.high), count = count + excluded.count");
            gather.bind(std::int64_t{pid}).bind(rawEnd).step();
            SampleFile::Statement remove(file, "delete from samples where pid = ?1 and time < ?2");
            remove.bind(std::int64_t{pid}).bind(rawEnd).step();
            any = any || file.changedRows() > 0;
        });
    }
    file.change([&] {
        SampleFile::Statement(file, "delete from minutes where time < ?").bind(minuteEnd).step();
        any = any || file.changedRows() > 0;
    });
    return any;
}

} // namespace ipncsdk::sensor
