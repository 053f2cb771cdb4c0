#pragma once

#include <QObject>
#include <QStringList>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class DiskProbe;
class TaskQueue;

/// Makes room on full drives: deletes the oldest day, again and again, until a drive has room or nothing is left to
/// delete; in a thread of its own, or at once. One deletion at a time, whoever asks and however often.
class RoomMaker final : public QObject {
    Q_OBJECT
public:
    /// `queue` (which lives in the GUI thread, as this object does) and `disks` outlive this object.
    RoomMaker(TaskQueue& queue, const DiskProbe& disks);
    /// Ends a deletion after the file that is being deleted; the rest of its day is the oldest at the next start.
    ~RoomMaker() override;

    /// Begins to seek room, of more than `threshold` MiB on one of the drives; nothing while room is being sought, or
    /// without a drive. Any thread.
    void seek(const QStringList& drives, int threshold);
    /// Makes room on the calling thread, after a deletion that is under way; true when there is some. Any thread.
    bool makeNow(const QStringList& drives, int threshold);
    /// A drive has room: what was deleted in vain before says nothing any more. Any thread.
    void found() { failed_ = false; }
    /// Whether there may be something to delete. Any thread.
    bool mayFind() const { return !failed_; }

signals:
    /// Room was made, or it could not be. GUI thread.
    void sigSought(bool made);

private:
    class Thread;

    void begin(const std::vector<std::string>& drives, int threshold);
    void onFinished();

    TaskQueue& queue_;
    const DiskProbe& disks_;
    std::mutex deleting_; ///< held by the one who deletes
    std::unique_ptr<Thread> thread_;
    std::atomic<bool> seeking_{false}; ///< asked for, or under way
    std::atomic<bool> failed_{false};  ///< nothing was left to delete the last time
};
