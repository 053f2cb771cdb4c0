#include "e2e/AccountTest.h"
#include "e2e/MapSteps.h"
#include "e2e/Sight.h"

#include <QtTest>

/// Cameras and sensors on a plan, placed, moved and taken away with the mouse; what the service keeps of it.
class tst_Maps final : public AccountTest {
    Q_OBJECT
private slots:
    void placedMovedAndTakenAway();

private:
    QStringList kept() const {
        return mapSteps::markersOf(data() + QStringLiteral("/service/store.db"), QStringLiteral("CAM0003"));
    }
    /// Where the newest marker stands, in fractions.
    QPointF keptPlace() const {
        const QStringList fields = kept().last().split(QLatin1Char('|'));
        return {fields.value(2).toDouble(), fields.value(3).toDouble()};
    }
    /// A place of the map, in fractions of what is seen of it.
    QPoint on(double x, double y) const {
        const QRect canvas = mapSteps::canvas(program());
        return {canvas.left() + qRound(x * canvas.width()), canvas.top() + qRound(y * canvas.height())};
    }
};

void tst_Maps::placedMovedAndTakenAway() {
    const QString camera = QStringLiteral("西大门入口");
    STEP(startAndSignIn());
    STEP(clickButton(QStringLiteral("电子地图")));
    Accessible cell;
    COMES(!(cell = program().accessible().find(QStringLiteral("地图窗口 1"))).isNull());
    QVERIFY(mapSteps::openMap(program(), cell.place(), 1));
    QCOMPARE(kept().size(), 1);

    const QPoint first = on(0.5, 0.62);
    QRect row;
    STEP(reveal(camera, row));
    const QImage before = Desktop::look(mapSteps::aroundMarker(first));
    STEP(dragTo(row.center(), first));
    BECOMES(kept().size(), 2);
    const QPointF placed = keptPlace();
    QVERIFY(placed.x() > 0.4 && placed.x() < 0.6 && placed.y() > 0.5 && placed.y() < 0.75);
    COMES(sight::difference(before, Desktop::look(mapSteps::aroundMarker(first))) > 0.05);

    // It follows the mouse to the right and a little up, until it is put down.
    const QPoint second = on(0.56, 0.58);
    Desktop::clickRight(first);
    STEP(chooseEntry(QStringLiteral("拖动标记")));
    Desktop::moveMouse((first + second) / 2);
    Desktop::click(second);
    COMES(keptPlace() != placed);
    const QPointF moved = keptPlace();
    QVERIFY(moved.x() > placed.x() && moved.y() < placed.y());
    COMES(sight::difference(before, Desktop::look(mapSteps::aroundMarker(first))) < 0.05);

    // It is there still after the next start.
    STEP(quit());
    STEP(start());
    STEP(signIn());
    STEP(clickButton(QStringLiteral("电子地图")));
    COMES(sight::isPicture(mapSteps::canvas(program())));
    QCOMPARE(keptPlace(), moved);
    Desktop::clickRight(second);
    STEP(chooseEntry(QStringLiteral("删除标记")));
    STEP(answer(Tip, QStringLiteral("确定")));
    STEP(closeTip(QStringLiteral("删除成功!")));
    BECOMES(kept().size(), 1);
    quit();
}

QTEST_MAIN(tst_Maps)
#include "tst_Maps.moc"
