#include "base/ui/Style.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFontDatabase>

// In a static library nothing refers to the resources, so the linker would leave them out.
static void initialiseResources() {
    Q_INIT_RESOURCE(style);
}

namespace corvanta {

void loadFonts() {
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/fonts"));
    if (!folder.exists() || !QFontDatabase().families(QFontDatabase::SimplifiedChinese).isEmpty())
        return;
    for (const QString& name : folder.entryList(QDir::Files)) {
        if (QFontDatabase::addApplicationFont(folder.filePath(name)) < 0)
            qDebug() << "not a font:" << name;
    }
}

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
