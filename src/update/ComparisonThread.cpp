#include "update/ComparisonThread.h"

#include <QFileInfo>

namespace corvanta::update {

ComparisonThread::ComparisonThread(QString folder, std::vector<ListedFile> files, QObject* parent)
    : BackgroundThread(parent)
    , folder_(std::move(folder))
    , files_(std::move(files)) {}

ComparisonThread::~ComparisonThread() {
    cancel();
    join();
}

void ComparisonThread::run() {
    std::vector<QString> paths;
    paths.reserve(files_.size());
    for (const ListedFile& file : files_)
        paths.push_back(file.path);
    const std::vector<QByteArray> md5s = md5OfFiles(folder_, paths, progress_);
    for (std::size_t i = 0; i < files_.size() && !progress_.cancelled; ++i) {
        if (md5s[i] == files_[i].md5)
            continue;
        const QFileInfo there(folder_ + QLatin1Char('/') + files_[i].path);
        differences_.push_back({files_[i], there.isFile() ? std::optional(there.size()) : std::nullopt});
    }
}

} // namespace corvanta::update
