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
        if (!file.open(QIODevice::WriteOnly))
            return file.errorString();
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        if (file.write(content) != content.size())
            file.cancelWriting();
        if (file.commit())
            return {};
        problem = file.errorString();
        if (file.error() != QFileDevice::RenameError)
            break;
    }
    return problem;
}

} // namespace corvanta
