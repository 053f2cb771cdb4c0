#pragma once

#include "base/BackgroundThread.h"

#include <QStringList>

#include <atomic>
#include <vector>

namespace corvanta::storage {

/// What became of a file that was to be deleted.
enum class Deletion {
    Deleted,
    Gone,    ///< it was not there any more
    InUse,   ///< a recording that is being written
    Refused, ///< no file of the data tree, or reached by a link
    Failed,  ///< the system says no
};

/// Deletes one stored file: `path` is that of a file right below drive + "ZEL/" + id / kind / day / for one of the
/// `drives`, and no folder of them, nor the file, is a link. Everything else is refused. Any thread.
Deletion deleteStoredFile(const QString& path, const QStringList& drives);

} // namespace corvanta::storage

/// Deletes stored files off the GUI thread, one after another. A thread runs once; `finished` tells that the results
/// are there.
class FileDeletion final : public BackgroundThread {
    Q_OBJECT
public:
    FileDeletion(QStringList drives, QStringList paths, QObject* parent = nullptr);
    /// Cancels, and waits for the end.
    ~FileDeletion() override;

    /// Makes it end soon; files that were not reached stay. Any thread.
    void cancel() { cancelled_ = true; }
    /// Files dealt with so far. Any thread.
    int done() const { return done_; }
    int total() const { return paths_.size(); }
    /// What became of the first files of the list, in its order: of all, or of those reached before it was
    /// cancelled. After `join`.
    const std::vector<corvanta::storage::Deletion>& results() const { return results_; }

protected:
    void run() override;

private:
    const QStringList drives_;
    const QStringList paths_;
    std::vector<corvanta::storage::Deletion> results_;
    std::atomic<bool> cancelled_{false};
    std::atomic<int> done_{0};
};
