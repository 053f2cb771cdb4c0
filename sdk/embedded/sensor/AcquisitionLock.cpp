#include "sensor/AcquisitionLock.h"

#include <sqlite3.h>

#include <utility>

namespace ipncsdk::sensor {

AcquisitionLock::AcquisitionLock(std::filesystem::path file)
    : file_(std::move(file)) {}

AcquisitionLock::~AcquisitionLock() = default;

void AcquisitionLock::Close::operator()(sqlite3* database) const {
    sqlite3_exec(database, "rollback", nullptr, nullptr, nullptr);
    sqlite3_close_v2(database);
}

bool AcquisitionLock::tryTake() {
    if (isHeld())
        return true;
    const std::u8string path = file_.u8string();
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(std::string(path.begin(), path.end()).c_str(), &opened,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, Close> database(opened);
    if (result != SQLITE_OK || sqlite3_exec(opened, "begin exclusive", nullptr, nullptr, nullptr) != SQLITE_OK)
        return false;
    database_ = std::move(database);
    return true;
}

void AcquisitionLock::release() {
    database_.reset();
}

} // namespace ipncsdk::sensor
