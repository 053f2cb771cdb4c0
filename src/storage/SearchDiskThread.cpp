#include "storage/SearchDiskThread.h"

#include <utility>

SearchDiskThread::SearchDiskThread(QStringList drives, corvanta::storage::FileQuery query, QObject* parent)
    : QThread(parent)
    , drives_(std::move(drives))
    , query_(std::move(query)) {
    connect(this, &QThread::finished, this, &SearchDiskThread::sigResult);
}

SearchDiskThread::~SearchDiskThread() {
    cancel();
    wait();
}

void SearchDiskThread::run() {
    result_ = corvanta::storage::searchFiles(drives_, query_, progress_);
}

std::vector<corvanta::storage::FileRecord> SearchDiskThread::takeResult() {
    wait(); // it is over, or about to be
    return std::exchange(result_, {});
}
