#pragma once

#include "logs/LogKinds.h"

#include <atomic>
#include <memory>
#include <thread>

/// Writes a table into a file, on a thread of its own from its making on. The file appears whole or not at all: it
/// is written under another name beside and renamed at the end, which replaces one that was there.
///
/// Made, asked and destroyed in one thread.
class LogExport final {
public:
    enum class Format { Text, Workbook };
    enum class State { Running, Done, Failed, Cancelled };

    LogExport(std::shared_ptr<const corvanta::logs::Table> table, Format format, QString file);
    /// Cancels what still runs and waits for its end.
    ~LogExport();
    LogExport(const LogExport&) = delete;
    LogExport& operator=(const LogExport&) = delete;

    void cancel() { cancelled_.store(true, std::memory_order_relaxed); }
    State state() const { return state_.load(std::memory_order_acquire); }
    /// How much is done, of `totalSteps`: a step is a row, once or twice as the format needs.
    int steps() const { return steps_.load(std::memory_order_relaxed); }
    int totalSteps() const;

    /// `file` with the suffix of the format ("txt", "xls"), added where it has another one; case does not matter.
    static QString withSuffix(const QString& file, Format format);

    /// Whether a cell is written as a number, and which: as the toolkit reads numbers, without "inf" and "nan".
    static bool isNumber(QStringView cell, double& value);

private:
    void run();
    bool writeAs(const QString& file);
    bool writeTextFile(const QString& file);
    bool writeWorkbook(const QString& file);
    /// Tells how far it is; false when it is to end.
    bool reached(int steps);

    const std::shared_ptr<const corvanta::logs::Table> table_;
    const Format format_;
    const QString file_;
    std::atomic<bool> cancelled_{false};
    std::atomic<int> steps_{0};
    std::atomic<State> state_{State::Running};
    std::thread thread_; ///< the last member: it uses the others
};
