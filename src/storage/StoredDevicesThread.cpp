#include "storage/StoredDevicesThread.h"

#include "storage/StoredFiles.h"

void StoredDevicesThread::run() {
    devices_ = corvanta::storage::storedDevices(drives_);
}
