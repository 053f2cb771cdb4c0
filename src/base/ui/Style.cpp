#include "base/ui/Style.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFont>
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

void applyStyle() {
    initialiseResources();
    QFile file(QStringLiteral(":/style/scrollbar/scrollbar.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug() << "no style sheet" << file.fileName();
        return;
    }
    qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
    // Behind it: with the style the toolkit takes the system's fonts for menus, lists and tool tips.
    QFont font;
    font.setFamilies({QStringLiteral("Microsoft YaHei"), QStringLiteral("Noto Sans CJK SC"),
                      QStringLiteral("Noto Sans"), QStringLiteral("sans-serif")});
    font.setPointSize(10);
    QApplication::setFont(font);
}

} // namespace corvanta
