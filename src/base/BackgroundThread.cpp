#include "base/BackgroundThread.h"

BackgroundThread::~BackgroundThread() {
    join();
}

void BackgroundThread::start() {
    thread_ = std::thread([this] {
        run();
        emit finished();
    });
}

void BackgroundThread::join() {
    if (thread_.joinable())
        thread_.join();
}
