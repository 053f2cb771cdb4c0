#include "recording/SmallDrive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

QString& theRefusal() {
    static QString text;
    return text;
}

bool writeText(const char* path, const QByteArray& text) {
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

} // namespace

void smallDrives::enterOwnMounts() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        theRefusal() = QStringLiteral("no mounts of our own: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        return;
    }
    if (user != 0) {
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
        writeText("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
    }
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        theRefusal() = QStringLiteral("mounts stay shared: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
}

QString smallDrives::refusal() {
    return theRefusal();
}

SmallDrive::SmallDrive(const QString& folder, int mebibytes)
    : folder_(QFile::encodeName(folder)) {
    const QByteArray options = "size=" + QByteArray::number(mebibytes) + "m";
    isMounted_ = mount("small", folder_.constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDrive::~SmallDrive() {
    vanish();
}

void SmallDrive::vanish() {
    if (isMounted_)
        umount2(folder_.constData(), MNT_DETACH);
    isMounted_ = false;
}

bool SmallDrive::makeReadOnly() {
    return mount(nullptr, folder_.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

qint64 SmallDrive::fill(const QString& name, qint64 bytes) const {
    const QString path = QDir(QFile::decodeName(folder_)).filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return 0;
    const QByteArray block(1 << 20, 'x');
    qint64 done = 0;
    while (done < bytes) {
        const qint64 taken = file.write(block.constData(), std::min<qint64>(block.size(), bytes - done));
        if (taken <= 0)
            break;
        done += taken;
    }
    return done;
}
