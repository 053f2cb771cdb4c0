#include "storage/RoomMaker.h"

#include "base/BackgroundThread.h"
#include "base/TaskQueue.h"
#include "storage/DiskProbe.h"
#include "storage/Rotation.h"

#include <utility>

namespace storage = corvanta::storage;

class RoomMaker::Thread final : public BackgroundThread {
public:
    Thread(QStringList drives, int threshold, const DiskProbe& disks)
        : drives_(std::move(drives))
        , threshold_(threshold)
        , disks_(disks) {}
    ~Thread() override {
        cancelled_ = true;
        join();
    }

    /// After `join`.
    bool hasMadeRoom() const { return made_; }

protected:
    void work() override {
        const auto cancelled = [this] {
            return cancelled_.load();
        };
        while (storage::chooseDrive(drives_, threshold_, disks_).isEmpty()) {
            if (!storage::deleteOldestDay(writableDrives(), disks_, cancelled))
                return;
        }
        made_ = true;
    }

private:
    /// Where a drive has vanished or lies open to be read only, nothing is gained by a deletion.
    QStringList writableDrives() const {
        QStringList result;
        for (const QString& drive : drives_) {
            if (disks_.freeBytes(drive))
                result += drive;
        }
        return result;
    }

    const QStringList drives_;
    const int threshold_; ///< MiB
    const DiskProbe& disks_;
    std::atomic<bool> cancelled_{false};
    bool made_ = false; ///< read after `join`
};

RoomMaker::RoomMaker(TaskQueue& queue, const DiskProbe& disks)
    : queue_(queue)
    , disks_(disks) {}

RoomMaker::~RoomMaker() = default;

void RoomMaker::seek(const QStringList& drives, int threshold) {
    if (drives.isEmpty() || seeking_.exchange(true))
        return;
    std::vector<std::string> roots;
    for (const QString& drive : drives)
        roots.push_back(drive.toStdString());
    queue_.post([this, roots = std::move(roots), threshold] { begin(roots, threshold); });
}

void RoomMaker::begin(const std::vector<std::string>& drives, int threshold) {
    QStringList roots;
    for (const std::string& drive : drives)
        roots += QString::fromStdString(drive);
    thread_ = std::make_unique<Thread>(roots, threshold, disks_);
    connect(thread_.get(), &BackgroundThread::finished, this, &RoomMaker::onFinished);
    thread_->start();
}

void RoomMaker::onFinished() {
    thread_->join();
    const bool made = thread_->hasMadeRoom();
    failed_ = !made;
    seeking_ = false;
    emit sigSought(made);
}
