#include "update/DownloadFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace corvanta::update {
namespace {

bool isLink(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() || info.isJunction();
}

bool isThere(const QString& path) {
    return isLink(path) || QFileInfo::exists(path);
}

/// Removes a file, also one that is marked as not to be written, or a link.
bool removeFile(const QString& path) {
    if (!isLink(path))
        QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner);
    return QFile::remove(path) || QDir().rmdir(path); // some links are removed like folders
}

} // namespace

DownloadFolder::DownloadFolder(QString path)
    : path_(std::move(path)) {}

DownloadFolder DownloadFolder::ofThisComputer() {
    return DownloadFolder(QDir::tempPath() + QStringLiteral("/Corvanta"));
}

bool DownloadFolder::remove() const {
    if (!isThere(path_))
        return true;
    if (isLink(path_) || !QFileInfo(path_).isDir())
        return removeFile(path_);
    return QDir(path_).removeRecursively(); // it removes links as such
}

bool DownloadFolder::create() const {
    const auto onlyMe = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    return !isThere(path_) && QDir().mkdir(path_) && QFile::setPermissions(path_, onlyMe);
}

bool DownloadFolder::prepareFor(const QString& file) const {
    const QStringList folders = file.split(QLatin1Char('/'));
    QString at = path_;
    for (int i = 0; i < folders.size(); ++i) {
        if (isLink(at) || !(QFileInfo(at).isDir() || QDir().mkdir(at)))
            return false;
        at += QLatin1Char('/') + folders[i];
    }
    return !isThere(at) || removeFile(at);
}

} // namespace corvanta::update
