#include "update/Version.h"

#include <QCoreApplication>

namespace corvanta::update {

QString versionText() {
    return QStringLiteral(CORVANTA_VERSION);
}

QString packageManagerText() {
    return QCoreApplication::translate("Version", "由系统的软件包管理器更新");
}

} // namespace corvanta::update
