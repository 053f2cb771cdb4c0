#pragma once

#include "api/Worker.h"
#include "sensor/Reading.h"

#include <chrono>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ipncsdk::api {

/// Writes what the inputs of a device read round the time of an alarm into files. One thread, but for the files,
/// which have a worker of their own.
///
/// A file is UTF-8: "#corvanta-dat 1", then a line "EPOCH.mmm<TAB>PID<TAB>VALUE" for each reading, in order of time.
class SensorLog final {
public:
    using Steady = std::chrono::steady_clock::time_point;
    using Wall = std::chrono::system_clock::time_point;
    static constexpr std::chrono::seconds before{60};
    static constexpr std::chrono::seconds after{10};
    static constexpr std::chrono::hours kept{24 * 30};

    explicit SensorLog(std::filesystem::path folder);
    SensorLog(const SensorLog&) = delete;
    SensorLog& operator=(const SensorLog&) = delete;

    /// The inputs whose readings are remembered, and the device of each.
    void setInputs(std::map<int, std::string> deviceOfInput);
    void take(const std::vector<sensor::Reading>& readings);
    /// Begins the file for an alarm at `time`, which the result names: what was read until now is written at once,
    /// what comes after it when `after` has gone by. Alarms of one device within one second share a file.
    std::string begin(const std::string& ipncid, Wall time, Steady now);
    /// Does what is due.
    void advance(Steady now);
    [[nodiscard]] std::optional<Steady> nextDue() const;
    /// Removes files that have become too old. Any thread.
    void removeOld();
    /// Writes what can be written yet, and ends the worker.
    void stop();

    /// True for a name as `begin` makes them, which may become part of a path.
    static bool isName(const std::string& name);

private:
    struct Sample {
        Wall time;
        double value = 0;
    };
    struct Pending {
        std::string ipncid;
        Wall time;
        Steady due;
    };
    void write(const std::string& name, const Pending& pending);

    const std::filesystem::path folder_;
    std::map<int, std::string> deviceOfInput_;
    std::map<int, std::deque<Sample>> samples_; ///< by pid, a little longer than a file reaches
    std::map<std::string, Pending> pending_;    ///< by name
    Worker files_{1};
};

} // namespace ipncsdk::api
