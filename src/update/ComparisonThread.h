#pragma once

#include "base/BackgroundThread.h"
#include "update/FileMd5.h"
#include "update/UpdateDescription.h"

#include <memory>
#include <optional>

namespace corvanta::update {

/// Looks which files of a description a folder lacks or has otherwise, off the GUI thread and over the cores.
class ComparisonThread final : public BackgroundThread {
    Q_OBJECT
public:
    /// A file that is missing or differs.
    struct Difference {
        ListedFile file;
        std::optional<qint64> size; ///< of what is there, bytes
    };

    ComparisonThread(QString folder, std::vector<ListedFile> files, QObject* parent = nullptr);
    /// Cancels, and waits for the end.
    ~ComparisonThread() override;

    void cancel() { progress_.cancelled = true; }
    /// Files compared so far. Any thread.
    int done() const { return progress_.done; }
    int total() const { return static_cast<int>(files_.size()); }
    /// In the order of the files; after `join`. Of one that was cancelled it says nothing.
    const std::vector<Difference>& differences() const { return differences_; }

protected:
    void run() override;

private:
    const QString folder_;
    const std::vector<ListedFile> files_;
    HashProgress progress_;
    std::vector<Difference> differences_;
};

} // namespace corvanta::update
