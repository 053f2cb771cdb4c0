#pragma once

#include "base/Clock.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// Notices that somebody else wrote to the store. One thread.
class ChangeProbe {
public:
    ChangeProbe() = default;
    ChangeProbe(const ChangeProbe&) = delete;
    ChangeProbe& operator=(const ChangeProbe&) = delete;
    virtual ~ChangeProbe() = default;

    /// True when a connection other than the probe's own, of whatever process, has committed a change since the last
    /// call. Cheap enough to be asked several times a second. A store that can't be asked has not changed.
    virtual bool changed() = 0;
};

/// What came of opening the store's file.
struct OpenedFile {
    std::unique_ptr<soci::session> session; ///< null when the file can't be used
    std::unique_ptr<ChangeProbe> changes;   ///< on a connection of its own; null when there is none
    std::string notice;                     ///< a sentence for the user; empty when all is as usual
};

/// What a store gets at certain moments, in the transaction that makes or changes its tables.
struct StoreContent {
    std::function<void(soci::session&)> fill;    ///< the content of a new store
    std::function<void(soci::session&)> upgrade; ///< what a store of an earlier version lacks
};

/// Opens the SQLite file `file`, checks it whole and makes it when it is missing.
///
/// A file that is no store of ours or fails its check is renamed with ".damaged-yyyyMMddhhmmss" (local time) behind
/// its name, together with what SQLite and `ContentFiles` keep beside it, and a new one is made. A file that can't be
/// reached or is held by another program stays as it is. Tables of an earlier version are brought to ours, in one
/// transaction. Several processes may do all this at once. `busyTimeout` is rounded up to seconds.
OpenedFile openDatabaseFile(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
                            const Clock& clock, const StoreContent& content);

/// Another eye on a store that is open; null when it can't be watched.
std::unique_ptr<ChangeProbe> watchDatabaseFile(const std::filesystem::path& file,
                                               std::chrono::milliseconds busyTimeout);

} // namespace ipncsdk::store
