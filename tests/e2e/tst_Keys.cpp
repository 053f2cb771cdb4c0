#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString Help = QStringLiteral("快捷键");
} // namespace

/// What the keys do in the main window.
class tst_Keys final : public ProgramTest {
    Q_OBJECT
public:
    tst_Keys()
        : ProgramTest(Sharing::Program) {}

private slots:
    void init();
    void fullScreen_data();
    void fullScreen();
    void layoutByDigit_data();
    void layoutByDigit();
    void arrowsMoveTheSelection();
    void help();
    void search();
    void devicePanel();
    void stopAll();

private:
    /// Gives the keyboard to the first tile.
    void takeFirstTile();
};

void tst_Keys::init() {
    ProgramTest::init();
    STEP(startAndSignIn());
    chooseLayout(QStringLiteral("九窗口"), 9);
}

void tst_Keys::takeFirstTile() {
    Desktop::click(window().tile(0).center());
    BECOMES(window().focusedTile(), 0);
}

void tst_Keys::fullScreen_data() {
    QTest::addColumn<QString>("back");
    QTest::newRow("F11") << QStringLiteral("F11");
    QTest::newRow("Escape") << QStringLiteral("Escape");
}

void tst_Keys::fullScreen() {
    QFETCH(QString, back);
    const QRect before = window().frame();
    QVERIFY(before != Desktop::screen());
    Desktop::keys({QStringLiteral("F11")});
    BECOMES(window().frame(), Desktop::screen());
    COMES(window().grid().right() == Desktop::screen().right());
    COMES(!window().button(QStringLiteral("退出全屏")).isNull());
    Desktop::keys({back});
    BECOMES(window().frame(), before);
    COMES(!window().button(QStringLiteral("全屏")).isNull());
}

void tst_Keys::layoutByDigit_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("tiles");
    int key = 0;
    for (const int tiles : {1, 4, 9, 16, 18, 25, 36, 64}) {
        ++key;
        QTest::addRow("%d", key) << QString::number(key) << tiles;
    }
}

void tst_Keys::layoutByDigit() {
    QFETCH(QString, key);
    QFETCH(int, tiles);
    // From a layout that is not the wanted one.
    STEP(chooseLayout(tiles == 4 ? QStringLiteral("一窗口") : QStringLiteral("四窗口"), tiles == 4 ? 1 : 4));
    STEP(takeFirstTile());
    Desktop::keys({key});
    BECOMES(window().shownTiles().size(), tiles);
}

void tst_Keys::arrowsMoveTheSelection() {
    STEP(takeFirstTile());
    // Into the corners, where it stays.
    const QVector<QPair<QString, int>> ways{
        {QStringLiteral("Right"), 1}, {QStringLiteral("Down"), 4}, {QStringLiteral("Right"), 5},
        {QStringLiteral("Right"), 5}, {QStringLiteral("Down"), 8}, {QStringLiteral("Down"), 8},
        {QStringLiteral("Left"), 7},  {QStringLiteral("Up"), 4},   {QStringLiteral("Up"), 1},
        {QStringLiteral("Up"), 1},    {QStringLiteral("Left"), 0}, {QStringLiteral("Left"), 0},
    };
    for (const auto& [key, tile] : ways) {
        Desktop::keys({key});
        BECOMES(window().focusedTile(), tile);
        COMES(sight::isSelected(window().tile(tile)));
        for (int other = 0; other < 9; ++other)
            QCOMPARE(sight::isSelected(window().tile(other)), other == tile);
    }
    Desktop::keys({QStringLiteral("Right"), QStringLiteral("Return")});
    QVERIFY(sight::becomesLive(window().tile(1)));
    Desktop::keys({QStringLiteral("Delete")});
    COMES(sight::isEmpty(window().tile(1)));
}

void tst_Keys::help() {
    Desktop::keys({QStringLiteral("F1")});
    COMES(program().isActive(Help));
    QVERIFY(!program().dialog(Help).find(QStringLiteral("搜索设备")).isNull());
    QVERIFY(!program().dialog(Help).find(QStringLiteral("Ctrl+F")).isNull());
    Desktop::keys({QStringLiteral("Escape")});
    COMES(program().dialog(Help).isNull());
    COMES(Program::isActive(window().window()));
    STEP(clickButton(QStringLiteral("帮助")));
    STEP(chooseEntry(Help));
    STEP(answer(Help, QStringLiteral("关闭")));
    COMES(Program::isActive(window().window()));
}

void tst_Keys::search() {
    const int all = window().rows().size();
    STEP(takeFirstTile());
    Desktop::keys({QStringLiteral("ctrl+f")});
    COMES(window().searchField().has(Accessible::State::Focused));
    // No layout, though each digit is a key for one.
    Desktop::type(QStringLiteral("14"));
    BECOMES(window().searchField().text(), QStringLiteral("14"));
    BECOMES(window().rows().size(), 0);
    QCOMPARE(window().shownTiles().size(), 9);
    Desktop::keys({QStringLiteral("ctrl+f")}); // what is written is chosen, so it is written over
    Desktop::type(QStringLiteral("a"));
    BECOMES(window().searchField().text(), QStringLiteral("a"));
    const QStringList found{QStringLiteral("仓库  10/10"), QStringLiteral("立体货架A"),
                            QStringLiteral("停车场  9/9"), QStringLiteral("地面停车A区"),
                            QStringLiteral("地下一层A区"), QStringLiteral("地下二层A区")};
    BECOMES(window().rows(), found);
    QCOMPARE(window().shownTiles().size(), 9);
    Desktop::keys({QStringLiteral("ctrl+a"), QStringLiteral("BackSpace")});
    BECOMES(window().rows().size(), all);
}

void tst_Keys::devicePanel() {
    const int width = window().grid().width();
    Desktop::keys({QStringLiteral("ctrl+t")});
    COMES(window().grid().width() > width);
    // The search brings it back.
    Desktop::keys({QStringLiteral("ctrl+f")});
    COMES(window().searchField().has(Accessible::State::Focused));
    BECOMES(window().grid().width(), width);
}

void tst_Keys::stopAll() {
    STEP(takeFirstTile());
    Desktop::keys({QStringLiteral("Return")});
    QVERIFY(sight::becomesLive(window().tile(0)));
    Desktop::keys({QStringLiteral("ctrl+w")});
    COMES(sight::isEmpty(window().tile(0)));
}

QTEST_MAIN(tst_Keys)
#include "tst_Keys.moc"
