#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString First = QStringLiteral("东大门入口");
const QString Second = QStringLiteral("东大门出口");
} // namespace

/// Videos opened and ended by every way there is, in a window with nine tiles.
class tst_OpenVideo final : public ProgramTest {
    Q_OBJECT
public:
    tst_OpenVideo()
        : ProgramTest(Sharing::Program) {}

private slots:
    void openAndEnd_data();
    void openAndEnd();
    void openedByOneWayEndedByAnother();
    void groupByItsMenu();
    void allByTheButton();
    void refusedOutsideTheLayout_data();
    void refusedOutsideTheLayout();

private:
    /// A tile or row is told to do something by this.
    enum class Way { DoubleClick, Enter, RowMenu, TileMenu, TileEnter, Delete };
    void prepare();
    void go(Way way, bool opens);
};

void tst_OpenVideo::prepare() {
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("九窗口"), 9));
    for (const int index : {0, 1, 2})
        COMES(sight::isEmpty(window().tile(index)));
}

void tst_OpenVideo::go(Way way, bool opens) {
    QRect row;
    const QRect tile = window().tile(1);
    switch (way) {
    case Way::DoubleClick:
        STEP(doubleClickRow(Second));
        break;
    case Way::Enter:
        // From the row above by the keyboard.
        STEP(reveal(First, row));
        Desktop::click(row.center());
        COMES(window().isCurrent(First));
        Desktop::keys({QStringLiteral("Down"), QStringLiteral("Return")});
        break;
    case Way::RowMenu:
        STEP(reveal(Second, row));
        Desktop::clickRight(row.center());
        STEP(chooseEntry(opens ? QStringLiteral("打开视频") : QStringLiteral("关闭视频")));
        break;
    case Way::TileMenu:
        Desktop::clickRight(tile.center());
        STEP(chooseEntry(opens ? QStringLiteral("打开视频") : QStringLiteral("停   止")));
        break;
    case Way::TileEnter:
    case Way::Delete:
        Desktop::click(tile.center());
        COMES(window().focusedTile() == 1);
        Desktop::keys({way == Way::Delete ? QStringLiteral("Delete") : QStringLiteral("Return")});
        break;
    }
}

void tst_OpenVideo::openAndEnd_data() {
    QTest::addColumn<int>("opening");
    QTest::addColumn<int>("ending");
    const auto add = [](const char* name, Way opening, Way ending) {
        QTest::newRow(name) << static_cast<int>(opening) << static_cast<int>(ending);
    };
    add("double click", Way::DoubleClick, Way::DoubleClick);
    add("Enter in the tree", Way::Enter, Way::Enter);
    add("menu of the row", Way::RowMenu, Way::RowMenu);
    add("menu of the tile", Way::TileMenu, Way::TileMenu);
    add("keys on the tile", Way::TileEnter, Way::Delete);
}

void tst_OpenVideo::openAndEnd() {
    QFETCH(int, opening);
    QFETCH(int, ending);
    STEP(prepare());
    STEP(go(static_cast<Way>(opening), true));
    QVERIFY(sight::becomesLive(window().tile(1)));
    QVERIFY(sight::isEmpty(window().tile(0)));
    STEP(go(static_cast<Way>(ending), false));
    COMES(sight::isEmpty(window().tile(1)));
}

void tst_OpenVideo::openedByOneWayEndedByAnother() {
    STEP(prepare());
    STEP(go(Way::Enter, true));
    QVERIFY(sight::becomesLive(window().tile(1)));
    STEP(go(Way::TileMenu, false));
    COMES(sight::isEmpty(window().tile(1)));
    STEP(go(Way::TileMenu, true));
    QVERIFY(sight::becomesLive(window().tile(1)));
    STEP(go(Way::DoubleClick, false));
    COMES(sight::isEmpty(window().tile(1)));
}

void tst_OpenVideo::groupByItsMenu() {
    STEP(prepare());
    QRect row;
    STEP(reveal(QStringLiteral("园区大门"), row));
    Desktop::clickRight(row.center());
    STEP(chooseEntry(QStringLiteral("打开本组视频")));
    for (int index = 0; index < 9; ++index)
        QVERIFY(sight::becomesLive(window().tile(index)));
    Desktop::clickRight(row.center());
    STEP(chooseEntry(QStringLiteral("关闭本组视频")));
    for (int index = 0; index < 9; ++index)
        COMES(sight::isEmpty(window().tile(index)));
}

void tst_OpenVideo::allByTheButton() {
    STEP(prepare());
    STEP(doubleClickRow(First));
    QVERIFY(sight::becomesLive(window().tile(0)));
    STEP(doubleClickRow(Second));
    QVERIFY(sight::becomesLive(window().tile(1)));
    STEP(clickButton(QStringLiteral("关闭所有视频")));
    COMES(sight::isEmpty(window().tile(0)) && sight::isEmpty(window().tile(1)));
}

void tst_OpenVideo::refusedOutsideTheLayout_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("text");
    QTest::newRow("of the default group")
        << QStringLiteral("门卫室") << QStringLiteral("请确认设备[CAM0005]在默认组[园区大门]中的索引小于64");
    QTest::newRow("of another group")
        << QStringLiteral("装配一线")
        << QStringLiteral("请确认设备[CAM0010]在左侧设备树中的索引小于64,或将设备[CAM0010]所在组设为默认组");
}

void tst_OpenVideo::refusedOutsideTheLayout() {
    QFETCH(QString, device);
    QFETCH(QString, text);
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(device));
    BECOMES(window().message(), text);
    for (int index = 0; index < 4; ++index)
        QVERIFY(sight::isEmpty(window().tile(index)));
    BECOMES(window().message(), QString());
}

QTEST_MAIN(tst_OpenVideo)
#include "tst_OpenVideo.moc"
