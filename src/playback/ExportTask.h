#pragma once

#include "base/TaskQueue.h"
#include "playback/ClipExport.h"

#include <QObject>

#include <atomic>
#include <thread>

namespace corvanta::playback {

/// An export on a thread of its own; what it comes to is told in the thread that this object lives in.
class ExportTask final : public QObject {
    Q_OBJECT
public:
    explicit ExportTask(QObject* parent = nullptr);
    /// Cancels, and waits for the frame that is just being copied.
    ~ExportTask() override;

    /// Begins; once for each object.
    void start(std::vector<ClipPart> parts, std::filesystem::path target);
    /// Ends it soon; `sigDone` comes all the same.
    void cancel();
    /// Valid when `sigDone` has come.
    const ExportResult& result() const { return result_; }

signals:
    /// Whole percents, each once.
    void sigProgress(int percent);
    void sigDone();

private:
    bool report(double done);

    TaskQueue queue_;
    std::atomic<bool> cancelled_{false};
    int percent_ = 0; ///< told last; the thread's own
    ExportResult result_;
    std::thread thread_;
};

} // namespace corvanta::playback
