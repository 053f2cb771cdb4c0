#include "e2e/MapSteps.h"

#include "e2e/Desktop.h"
#include "e2e/Program.h"
#include "e2e/Sight.h"
#include "support/SqliteShell.h"

#include <QtTest>

namespace mapSteps {

QRect canvas(const Program& program) {
    return program.accessible().find(QStringLiteral("地图窗口 1")).find(QStringLiteral("地图")).place();
}

bool openMap(const Program& program, const QRect& cell, int number) {
    Desktop::clickRight(cell.center());
    if (!QTest::qWaitFor([&] { return !program.openMenu().isNull(); }, Desktop::Patience))
        return false;
    QStringList keys{QStringLiteral("Down"), QStringLiteral("Down"), QStringLiteral("Right")};
    for (int i = 0; i < number; ++i)
        keys += QStringLiteral("Down");
    Desktop::keys(keys + QStringList{QStringLiteral("Return")});
    return QTest::qWaitFor([&] { return program.openMenu().isNull() && sight::isPicture(canvas(program)); },
                           Desktop::Patience);
}

QRect aroundMarker(const QPoint& place) {
    constexpr int side = 60; // px
    constexpr int above = 40;
    return {place.x() - side / 2, place.y() - above, side, above};
}

bool blinks(const QRect& area) {
    constexpr int wanted = 4;
    constexpr double least = 0.02;
    int changes = 0;
    QImage last = Desktop::look(area);
    return QTest::qWaitFor(
        [&] {
            const QImage now = Desktop::look(area);
            changes += sight::difference(last, now) > least ? 1 : 0;
            last = now;
            return changes >= wanted;
        },
        Desktop::Patience);
}

QStringList markersOf(const QString& store, const QString& ipncId) {
    return sqliteShell::run(store,
                            QStringLiteral("select mapid, pid, json_extract(document, '$.point.x'), "
                                           "json_extract(document, '$.point.y') from mapmarkers where ipncid = '%1' "
                                           "order by id;")
                                .arg(ipncId));
}

} // namespace mapSteps
