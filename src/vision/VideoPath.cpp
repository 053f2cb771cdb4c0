#include "vision/VideoPath.h"

namespace corvanta::vision {

QString deviceOfVideo(const QString& path, const QStringList& drives) {
    for (const QString& drive : drives) {
        const QString tree = drive + QStringLiteral("ZEL/");
        if (path.startsWith(tree))
            return path.mid(tree.size()).section(QLatin1Char('/'), 0, 0);
    }
    return path.split(QLatin1Char('/')).value(2);
}

} // namespace corvanta::vision
