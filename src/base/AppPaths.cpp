#include "base/AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

// Asking for permissions is not enough: a read-only mount and Windows' virtualised program folders say yes and
// then refuse. Only a file that was really made proves it.
bool canBeWritten(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("/.probe-XXXXXX"));
    return probe.open();
}

} // namespace

AppPaths::AppPaths(const QString& root)
    : root_(QDir::cleanPath(QFileInfo(root).absoluteFilePath())) {}

AppPaths AppPaths::forApplication() {
    return forProgramIn(QCoreApplication::applicationDirPath());
}

bool AppPaths::isSystemFolder(const QString& folder) {
    const QString place = QDir::cleanPath(folder) + QLatin1Char('/');
    return place.startsWith(QLatin1String("/usr/")) && !place.startsWith(QLatin1String("/usr/src/"));
}

AppPaths AppPaths::forProgramIn(const QString& folder) {
    if (!isSystemFolder(folder) && canBeWritten(folder))
        return AppPaths(folder);
    const QString users =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/corvanta");
    QDir().mkpath(users);
    return AppPaths(users);
}
