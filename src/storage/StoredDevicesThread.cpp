#include "storage/StoredDevicesThread.h"

#include "storage/StoredFiles.h"

void StoredDevicesThread::work() {
    devices_ = corvanta::storage::storedDevices(drives_);
}
