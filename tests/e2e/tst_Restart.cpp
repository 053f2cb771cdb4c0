#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString Zoom = QStringLiteral("VideoZoomDisplayIndex");
const QString OpenVideos = QStringLiteral("TileWidgetIndexList");
const QString WindowPlace = QStringLiteral("窗口位置");
const QString TreeState = QStringLiteral("设备树状态");
} // namespace

/// The next start is where the last one ended, however that came about.
class tst_Restart final : public ProgramTest {
    Q_OBJECT
private slots:
    void stateIsRestored_data();
    void stateIsRestored();
    void fullScreenIsRestored();
    void nothingIsRestoredWhenNotWanted();

private:
    void resizeWindow();
    void closeGroup(const QString& name);
    /// Waits until the file says all of the state, as it must for what cannot be saved at the end.
    void waitForState(int zoom);
    QRect storedPlace();
};

void tst_Restart::resizeWindow() {
    const QRect before = window().frame();
    int steps = 0;
    STEP(takeCorner());
    COMES((Desktop::pull(before.bottomRight(), before.bottomRight() - QPoint(100, 40), steps),
           window().frame().width() < before.width() - 60));
    Desktop::release();
}

void tst_Restart::closeGroup(const QString& name) {
    const QString next =
        name == QStringLiteral("园区大门") ? QStringLiteral("东大门入口") : QStringLiteral("装配一线");
    QRect place;
    STEP(reveal(name, place));
    Desktop::click(place.center());
    COMES(window().isCurrent(name));
    Desktop::keys({QStringLiteral("Left")});
    COMES(!window().hasRow(next));
}

QRect tst_Restart::storedPlace() {
    const QVariantMap map = program().stored(WindowPlace).toMap();
    const auto number = [&map](const char* key) {
        return map.value(QLatin1String(key)).toInt();
    };
    return {number("x"), number("y"), number("width"), number("height")};
}

void tst_Restart::waitForState(int zoom) {
    BECOMES(program().stored(Zoom).toInt(), zoom);
    BECOMES(program().stored(OpenVideos).toList().size(), 2);
    BECOMES(program().stored(TreeState).toMap().value(QStringLiteral("closed")).toList().size(), 2);
    BECOMES(storedPlace(), window().frame());
}

void tst_Restart::stateIsRestored_data() {
    QTest::addColumn<bool>("killed");
    QTest::addColumn<int>("zoom");
    QTest::newRow("ended") << false << -1;
    QTest::newRow("ended, zoomed") << false << 2;
    QTest::newRow("killed, zoomed") << true << 2;
}

void tst_Restart::stateIsRestored() {
    QFETCH(bool, killed);
    QFETCH(int, zoom);
    STEP(startAndSignIn());
    STEP(resizeWindow());
    STEP(chooseLayout(QStringLiteral("九窗口"), 9));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    STEP(doubleClickRow(QStringLiteral("西大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)) && sight::becomesLive(window().tile(2)));
    STEP(closeGroup(QStringLiteral("园区大门")));
    STEP(closeGroup(QStringLiteral("一号厂房")));
    if (zoom >= 0) {
        Desktop::doubleClick(window().tile(zoom).center());
        BECOMES(window().shownTiles(), QVector<int>{zoom});
    }
    const QRect place = window().frame();
    const QStringList rows = window().rows();
    if (killed) {
        STEP(waitForState(zoom));
        program().kill();
    } else {
        STEP(quit());
    }

    STEP(start());
    BECOMES(window().frame(), place);
    QCOMPARE(window().shownTiles().size(), zoom >= 0 ? 1 : 9);
    STEP(signIn());
    QCOMPARE(window().rows(), rows);
    if (zoom >= 0) {
        QCOMPARE(window().shownTiles(), QVector<int>{zoom});
        QVERIFY(sight::becomesLive(window().grid()));
        Desktop::keys({QStringLiteral("Escape")});
        BECOMES(window().shownTiles().size(), 9);
    }
    QVERIFY(sight::becomesLive(window().tile(0)) && sight::becomesLive(window().tile(2)));
    QVERIFY(sight::isEmpty(window().tile(1)));
    quit();
}

void tst_Restart::fullScreenIsRestored() {
    const QRect screen = Desktop::screen();
    STEP(start());
    const QRect before = window().frame();
    Desktop::keys({QStringLiteral("F11")});
    BECOMES(window().frame(), screen);
    BECOMES(program().stored(WindowPlace).toMap().value(QStringLiteral("state")).toString(),
            QStringLiteral("fullscreen"));
    program().kill();
    STEP(start());
    BECOMES(window().frame(), screen);
    Desktop::keys({QStringLiteral("F11")});
    BECOMES(window().frame(), before);
    quit();
}

void tst_Restart::nothingIsRestoredWhenNotWanted() {
    const QString wanted = QStringLiteral("启动时恢复上次的状态");
    STEP(startAndSignIn());
    STEP(openSettings(QStringLiteral("常规")));
    STEP(clickIn(Settings, wanted));
    STEP(answer(Settings, QStringLiteral("确定")));
    QCOMPARE(program().stored(QStringLiteral("是否恢复状态")).toBool(), false);
    const QRect first = window().frame();
    STEP(resizeWindow());
    STEP(chooseLayout(QStringLiteral("九窗口"), 9));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)));
    STEP(quit());
    STEP(start());
    BECOMES(window().frame(), first);
    STEP(signIn());
    QCOMPARE(window().shownTiles().size(), 64);
    QVERIFY(!program().log().contains(QStringLiteral("\"avreq\"")));
    quit();
}

QTEST_MAIN(tst_Restart)
#include "tst_Restart.moc"
