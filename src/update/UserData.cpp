#include "update/UserData.h"

#include <QStringList>

namespace corvanta::update {
namespace {

bool isOneOf(const QString& name, const QStringList& names) {
    return names.contains(name, Qt::CaseInsensitive);
}

} // namespace

bool isUserData(const QString& path, bool isFolder) {
    // Anywhere; servers and clients of all versions agree on these.
    static const QStringList Files{QStringLiteral("dataBase.db"), QStringLiteral("versionMd5.json")};
    static const QString Workspaces = QStringLiteral("workspaces");
    // What else this program writes below its data folder, which may be the installation folder. No installation
    // brings any of it, so nothing is missed by leaving it out.
    static const QStringList Beside{QStringLiteral("dataBase.db-wal"), QStringLiteral("dataBase.db-shm"),
                                    QStringLiteral("dataBase.db-journal"), QStringLiteral("versionMd5.json.sig")};
    static const QStringList OwnFolders{QStringLiteral("config"), QStringLiteral("service")};

    const QString name = path.section(QLatin1Char('/'), -1);
    const bool isTop = !path.contains(QLatin1Char('/'));
    if (isFolder)
        return name.compare(Workspaces, Qt::CaseInsensitive) == 0 || (isTop && isOneOf(name, OwnFolders));
    return isOneOf(name, Files) || isOneOf(name, Beside);
}

} // namespace corvanta::update
