#pragma once

#include "base/BackgroundThread.h"
#include "storage/StoredFiles.h"

/// One search of stored files, off the GUI thread. A thread runs once; `finished` tells that the result is there.
class SearchDiskThread final : public BackgroundThread {
    Q_OBJECT
public:
    SearchDiskThread(QStringList drives, corvanta::storage::FileQuery query, QObject* parent = nullptr);
    /// Cancels, and waits for the end.
    ~SearchDiskThread() override;

    /// Makes the search end soon, with what it has. Any thread.
    void cancel() { progress_.cancelled = true; }
    bool isCancelled() const { return progress_.cancelled; }
    /// How far it is. Any thread.
    const corvanta::storage::SearchProgress& progress() const { return progress_; }
    /// What was found; after `sigResult`, once.
    std::vector<corvanta::storage::FileRecord> takeResult();

signals:
    /// The search is over; in the thread of the receiver, which takes the result.
    void sigResult();

protected:
    void run() override;

private:
    const QStringList drives_;
    const corvanta::storage::FileQuery query_;
    corvanta::storage::SearchProgress progress_;
    std::vector<corvanta::storage::FileRecord> result_;
};
