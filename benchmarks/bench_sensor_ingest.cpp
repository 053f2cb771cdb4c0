/// Readings of many inputs stored and known as the newest, against plain inserts of the same rows in the same
/// transactions by SQLite itself, with the same settings of the file. Medians.
#include "sensor/LatestValues.h"
#include "sensor/SampleWriter.h"

#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace sensor = ipncsdk::sensor;

namespace {

constexpr int Inputs = 200;
constexpr int Rounds = 25; ///< readings of each input in one transaction
constexpr int Transactions = 100;
constexpr int Repeats = 5;

using Clock = std::chrono::steady_clock;

/// The readings of one transaction, a round of all inputs a second.
std::vector<sensor::Reading> readings(int transaction) {
    std::vector<sensor::Reading> batch;
    batch.reserve(std::size_t{Inputs} * Rounds);
    for (int round = 0; round < Rounds; ++round) {
        const std::chrono::system_clock::time_point time(
            std::chrono::seconds(1'700'000'000 + transaction * Rounds + round));
        for (int pid = 1; pid <= Inputs; ++pid)
            batch.push_back({pid, time, std::sin(pid + round * 0.1) * 40, true});
    }
    return batch;
}

double ours(const std::filesystem::path& file) {
    const ipncsdk::Clock clock;
    // What is old would be brought together meanwhile.
    sensor::SampleRetention keepAll;
    keepAll.rawDays = 100'000;
    keepAll.minuteDays = 100'000;
    sensor::SampleWriter writer(file, clock, keepAll);
    sensor::LatestValues latest;
    writer.flush();
    const auto begin = Clock::now();
    for (int i = 0; i < Transactions; ++i) {
        const auto batch = readings(i);
        latest.take(batch);
        writer.take(batch);
        writer.flush();
        if (latest.takeChanged().size() != std::size_t{Inputs})
            std::abort();
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

double theirs(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    sqlite3_open(file.c_str(), &database);
    const auto run = [&](const char* statements) {
        if (sqlite3_exec(database, statements, nullptr, nullptr, nullptr) != SQLITE_OK)
            std::abort();
    };
    run("pragma journal_mode = wal; pragma synchronous = normal; pragma wal_autocheckpoint = 8000;"
        "create table samples (pid integer not null, time integer not null, value real not null,"
        " state integer not null, primary key (pid, time)) without rowid");
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(database, "insert into samples values (?, ?, ?, ?)", -1, &insert, nullptr);
    const auto begin = Clock::now();
    for (int i = 0; i < Transactions; ++i) {
        const auto batch = readings(i);
        run("begin immediate");
        for (const sensor::Reading& reading : batch) {
            sqlite3_bind_int(insert, 1, reading.pid);
            sqlite3_bind_int64(insert, 2, sensor::toMilliseconds(reading.time));
            sqlite3_bind_double(insert, 3, reading.value);
            sqlite3_bind_int(insert, 4, reading.normal ? 1 : 0);
            if (sqlite3_step(insert) != SQLITE_DONE)
                std::abort();
            sqlite3_reset(insert);
        }
        run("commit");
    }
    const double time = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    sqlite3_finalize(insert);
    sqlite3_close(database);
    return time;
}

double median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main() {
    const QTemporaryDir folder;
    std::vector<double> own;
    std::vector<double> plain;
    for (int i = 0; i < Repeats; ++i) {
        const std::string number = std::to_string(i);
        own.push_back(ours(folder.filePath(QStringLiteral("ours")).toStdString() + number));
        plain.push_back(theirs(folder.filePath(QStringLiteral("theirs")).toStdString() + number));
    }
    constexpr double rows = double(Inputs) * Rounds * Transactions;
    std::printf("sensor_ingest %.0f ms vs sqlite %.0f ratio %.2f\n", median(own), median(plain),
                median(own) / median(plain));
    std::fprintf(stderr, "%.0f samples a second\n", rows / median(own) * 1000);
}
