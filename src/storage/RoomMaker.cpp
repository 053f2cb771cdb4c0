#include "storage/RoomMaker.h"

#include "base/BackgroundThread.h"
#include "base/TaskQueue.h"
#include "storage/DiskProbe.h"
#include "storage/Rotation.h"

#include <functional>
#include <utility>

namespace storage = corvanta::storage;

namespace {

struct Wanted {
    const QStringList& drives; ///< one of them shall have room
    int threshold;             ///< of more than this, MiB
    const DiskProbe& disks;
    std::mutex& deleting;
};

/// Deletes what is on the drives of `from`. True when there is room.
bool makeRoom(const Wanted& wanted, const QStringList& from, const std::function<bool()>& cancelled) {
    while (true) {
        const std::lock_guard lock(wanted.deleting);
        if (!storage::chooseDrive(wanted.drives, wanted.threshold, wanted.disks).isEmpty())
            return true;
        if (!storage::deleteOldestDay(from, wanted.disks, cancelled))
            return false;
    }
}

} // namespace

class RoomMaker::Thread final : public BackgroundThread {
public:
    Thread(QStringList drives, int threshold, const DiskProbe& disks, std::mutex& deleting)
        : drives_(std::move(drives))
        , threshold_(threshold)
        , disks_(disks)
        , deleting_(deleting) {}
    ~Thread() override {
        cancelled_ = true;
        join();
    }

    /// After `join`.
    bool hasMadeRoom() const { return made_; }

protected:
    void run() override {
        // Where a drive has vanished or lies open to be read only, nothing is gained by a deletion.
        QStringList writable;
        for (const QString& drive : drives_) {
            if (disks_.freeBytes(drive))
                writable += drive;
        }
        made_ = makeRoom({drives_, threshold_, disks_, deleting_}, writable, [this] { return cancelled_.load(); });
    }

private:
    const QStringList drives_;
    const int threshold_; ///< MiB
    const DiskProbe& disks_;
    std::mutex& deleting_;
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

bool RoomMaker::makeNow(const QStringList& drives, int threshold) {
    return makeRoom({drives, threshold, disks_, deleting_}, drives, {});
}

void RoomMaker::begin(const std::vector<std::string>& drives, int threshold) {
    QStringList roots;
    for (const std::string& drive : drives)
        roots += QString::fromStdString(drive);
    thread_ = std::make_unique<Thread>(roots, threshold, disks_, deleting_);
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
