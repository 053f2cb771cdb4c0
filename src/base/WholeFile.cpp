#include "base/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

namespace corvanta {

namespace {

constexpr int tries = 25;
constexpr unsigned long interval = 20; ///< milliseconds

} // namespace

QString writeWholeFile(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QString problem;
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (attempt > 0)
            QThread::msleep(interval);
        QSaveFile file(path);
        file.setDirectWriteFallback(true);
        // What is buffered is written at the end, and that it could not be (the disk is full) is not noticed: an
        // empty file would take the good one's place.
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return file.errorString();
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        if (file.write(content) != content.size()) {
            problem = file.errorString();
            file.cancelWriting();
            return problem;
        }
        if (file.commit())
            return {};
        problem = file.errorString();
        if (file.error() != QFileDevice::RenameError)
            break;
    }
    return problem;
}

} // namespace corvanta
