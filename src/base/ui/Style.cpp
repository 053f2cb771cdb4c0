#include "base/ui/Style.h"

#include <QDebug>
#include <QFile>

// In a static library nothing refers to the resources, so the linker would leave them out.
static void initialiseResources() {
    Q_INIT_RESOURCE(style);
}

namespace corvanta {

QString loadStyle() {
    initialiseResources();
    QFile file(QStringLiteral(":/style/scrollbar/scrollbar.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug() << "no style sheet" << file.fileName();
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace corvanta
