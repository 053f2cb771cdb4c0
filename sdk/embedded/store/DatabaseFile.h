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

/// What came of opening the store's file.
struct OpenedFile {
    std::unique_ptr<soci::session> session; ///< null when the file can't be used
    std::string notice;                     ///< a sentence for the user; empty when all is as usual
};

/// Opens the SQLite file `file`, checks it whole and makes it when it is missing.
///
/// A file that is no store of ours or fails its check is renamed with ".damaged-yyyyMMddhhmmss" (local time) behind
/// its name, together with the files that SQLite keeps beside it, and a new one is made. A file that can't be
/// reached or is held by another program stays as it is. `fill` makes the content of a new store, in the same
/// transaction as its tables. `busyTimeout` is rounded up to seconds.
OpenedFile openDatabaseFile(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
                            const Clock& clock, const std::function<void(soci::session&)>& fill);

} // namespace ipncsdk::store
