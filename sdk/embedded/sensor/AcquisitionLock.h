#pragma once

#include <filesystem>
#include <memory>
#include <string>

struct sqlite3;

namespace ipncsdk::sensor {

/// Decides which process on a store reads the boards: the one that holds the lock on a file beside the store. The
/// lock is one of SQLite's, which hold on every system, also between two owners in one process, and end with the
/// process.
class AcquisitionLock final {
public:
    explicit AcquisitionLock(std::filesystem::path file);
    ~AcquisitionLock();
    AcquisitionLock(const AcquisitionLock&) = delete;
    AcquisitionLock& operator=(const AcquisitionLock&) = delete;

    /// Takes the lock when it is free. True once this holds it.
    bool tryTake();
    [[nodiscard]] bool isHeld() const { return database_ != nullptr; }
    void release();

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    const std::filesystem::path file_;
    std::unique_ptr<sqlite3, Close> database_; ///< in a transaction that nobody else can have; null without the lock
};

} // namespace ipncsdk::sensor
