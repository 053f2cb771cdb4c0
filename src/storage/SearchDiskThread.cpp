#include "storage/SearchDiskThread.h"

#include <utility>

SearchDiskThread::SearchDiskThread(QStringList drives, corvanta::storage::FileQuery query, QObject* parent)
    : BackgroundThread(parent)
    , drives_(std::move(drives))
    , query_(std::move(query)) {
    connect(this, &BackgroundThread::finished, this, &SearchDiskThread::sigResult);
}

SearchDiskThread::~SearchDiskThread() {
    cancel();
    join();
}

void SearchDiskThread::run() {
    result_ = corvanta::storage::searchFiles(drives_, query_, progress_);
}

std::vector<corvanta::storage::FileRecord> SearchDiskThread::takeResult() {
    join(); // it is over, or about to be
    return std::exchange(result_, {});
}
