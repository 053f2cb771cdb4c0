#include "api/SensorLog.h"

#include "base/LocalTime.h"
#include "base/Log.h"
#include "base/ReplaceFile.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

namespace ipncsdk::api {

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr auto firstLine = "#corvanta-dat 1\n";
constexpr std::string_view ending = ".dat";
constexpr std::size_t mostLines = 200'000;

struct Line {
    long long time = 0; ///< milliseconds since the beginning of 1970
    int pid = 0;
    double value = 0;
};

long long millisecondsOf(SensorLog::Wall time) {
    return std::chrono::duration_cast<milliseconds>(time.time_since_epoch()).count();
}

fs::path pathOf(const fs::path& folder, const std::string& name) {
    return folder / fs::path(std::u8string(name.begin(), name.end()));
}

void writeFile(const fs::path& folder, const std::string& name, std::vector<Line> lines) {
    std::sort(lines.begin(), lines.end(), [](const Line& one, const Line& other) {
        return one.time != other.time ? one.time < other.time : one.pid < other.pid;
    });
    std::string text = firstLine;
    for (const Line& line : lines) {
        std::array<char, 96> buffer{};
        const int length = std::snprintf(buffer.data(), buffer.size(), "%lld.%03lld\t%d\t%.10g\n", line.time / 1000,
                                         line.time % 1000, line.pid, line.value);
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    std::error_code error;
    fs::create_directories(folder, error);
    const fs::path target = pathOf(folder, name);
    fs::path part = target;
    part += ".part";
    std::ofstream out(part, std::ios::binary);
    out << text;
    out.close();
    if (out)
        error = replaceFile(part, target);
    if (!out || error)
        logLine("the sensor data of an alarm can't be written");
}

} // namespace

SensorLog::SensorLog(fs::path folder)
    : folder_(std::move(folder)) {}

void SensorLog::setInputs(std::map<int, std::string> deviceOfInput) {
    deviceOfInput_ = std::move(deviceOfInput);
    std::erase_if(samples_, [this](const auto& entry) { return deviceOfInput_.count(entry.first) == 0; });
}

void SensorLog::take(const std::vector<sensor::Reading>& readings) {
    for (const sensor::Reading& reading : readings) {
        if (!reading.normal || deviceOfInput_.count(reading.pid) == 0)
            continue;
        std::deque<Sample>& samples = samples_[reading.pid];
        samples.push_back({reading.time, reading.value});
        // Also those of a time that is still to come: they were read before the clock was set back.
        while (std::chrono::abs(reading.time - samples.front().time) > before + 2 * after ||
               samples.size() > mostLines)
            samples.pop_front();
    }
}

std::string SensorLog::begin(const std::string& ipncid, Wall time, Steady now) {
    std::string name = localTime(millisecondsOf(time), "%Y%m%d%H%M%S") + "-" + ipncid + std::string(ending);
    const auto [entry, isNew] = pending_.try_emplace(name, Pending{ipncid, time, now + after});
    if (isNew)
        write(name, entry->second);
    return name;
}

void SensorLog::advance(Steady now) {
    for (auto entry = pending_.begin(); entry != pending_.end();) {
        if (entry->second.due > now) {
            ++entry;
            continue;
        }
        write(entry->first, entry->second);
        entry = pending_.erase(entry);
    }
}

std::optional<SensorLog::Steady> SensorLog::nextDue() const {
    std::optional<Steady> next;
    for (const auto& [name, pending] : pending_) {
        if (!next || pending.due < *next)
            next = pending.due;
    }
    return next;
}

void SensorLog::write(const std::string& name, const Pending& pending) {
    std::vector<Line> lines;
    for (const auto& [pid, samples] : samples_) {
        if (deviceOfInput_.at(pid) != pending.ipncid)
            continue;
        for (const Sample& sample : samples) {
            if (sample.time >= pending.time - before && sample.time <= pending.time + after &&
                lines.size() < mostLines)
                lines.push_back({millisecondsOf(sample.time), pid, sample.value});
        }
    }
    files_.post([folder = folder_, name, lines = std::move(lines)] { writeFile(folder, name, lines); });
}

void SensorLog::removeOld() {
    files_.post([folder = folder_] {
        std::error_code error;
        const auto oldest = fs::file_time_type::clock::now() - kept;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code ignored; // what is gone already need not be removed
            if (entry->last_write_time(ignored) < oldest && !ignored)
                fs::remove(entry->path(), ignored);
        }
    });
}

void SensorLog::stop() {
    for (const auto& [name, pending] : pending_)
        write(name, pending);
    pending_.clear();
    files_.finish();
}

bool SensorLog::isName(const std::string& name) {
    constexpr std::size_t stampLength = 15; // "20260401093000-"
    if (name.size() <= stampLength + ending.size() ||
        name.compare(name.size() - ending.size(), ending.size(), ending) != 0)
        return false;
    return name[stampLength - 1] == '-' &&
           std::all_of(name.begin(), name.begin() + stampLength - 1, [](char c) { return c >= '0' && c <= '9'; }) &&
           isDeviceId(name.substr(stampLength, name.size() - stampLength - ending.size()));
}

} // namespace ipncsdk::api
