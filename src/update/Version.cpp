#include "update/Version.h"

namespace corvanta::update {

QString versionText() {
    return QStringLiteral(CORVANTA_VERSION);
}

} // namespace corvanta::update
