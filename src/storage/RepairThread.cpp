#include "storage/RepairThread.h"

#include "base/DataTree.h"
#include "storage/StoredFiles.h"
#include "storage/avi/AviRepair.h"

#include <QDebug>

#include <utility>

using corvanta::avi::RepairResult;

RepairThread::RepairThread(QStringList drives, QObject* parent)
    : BackgroundThread(parent)
    , drives_(std::move(drives)) {}

RepairThread::~RepairThread() {
    cancelled_ = true;
    join();
}

void RepairThread::run() {
    namespace storage = corvanta::storage;
    storage::FileQuery all;
    all.start = QDateTime(QDate(1, 1, 1), QTime(0, 0));
    all.end = QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59));
    all.kinds = QStringList{corvanta::dataTree::LocalRecord};
    storage::SearchProgress progress;
    for (const storage::FileRecord& file : storage::searchFiles(drives_, all, progress)) {
        if (cancelled_)
            return;
        if (!file.name.endsWith(QLatin1String(".avi")))
            continue;
        const RepairResult result = corvanta::avi::repairAvi(std::filesystem::path(file.path.toStdU16String()));
        if (result == RepairResult::Repaired) {
            ++repaired_;
            qDebug() << "recording completed" << file.path;
        } else if (result == RepairResult::Failed) {
            qDebug() << "recording cannot be completed" << file.path;
        }
    }
}
