#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

#include <numeric>

namespace {
const QString Zoom = QStringLiteral("VideoZoomDisplayIndex");
const QString Rows = QStringLiteral("fwidget_row");
const QString Columns = QStringLiteral("fwidget_col");
const QString GridMenu = QStringLiteral("画面布局");
} // namespace

/// Layouts by buttons and by the grid's menu, and one tile shown alone.
class tst_Layouts final : public ProgramTest {
    Q_OBJECT
public:
    tst_Layouts()
        : ProgramTest(Sharing::Program) {}

private slots:
    void layout_data();
    void layout();
    void zoom_data();
    void zoom();
    void layoutEndsZoom();
    void zoomedVideoIsLarge();

private:
    /// Whether as many equal tiles as told stand beside and below one another.
    bool isArranged(int rows, int columns);
};

bool tst_Layouts::isArranged(int rows, int columns) {
    const QVector<int> shown = window().shownTiles();
    QVector<int> expected(rows * columns);
    std::iota(expected.begin(), expected.end(), 0);
    if (shown != expected)
        return false;
    const QRect grid = window().grid();
    for (const int index : shown) {
        const QRect tile = window().tile(index);
        const QPoint place(grid.width() * (index % columns) / columns, grid.height() * (index / columns) / rows);
        // What does not divide evenly goes to some of them.
        if ((tile.topLeft() - grid.topLeft() - place).manhattanLength() > 2 * columns ||
            qAbs(tile.width() - grid.width() / columns) > 1 || qAbs(tile.height() - grid.height() / rows) > 1)
            return false;
    }
    return true;
}

void tst_Layouts::layout_data() {
    QTest::addColumn<bool>("byButton");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    struct Layout {
        const char* name;
        int rows;
        int columns;
        bool hasButton;
    };
    static constexpr Layout layouts[] = {{"一窗口", 1, 1, true},     {"四窗口", 2, 2, true},
                                         {"九窗口", 3, 3, true},     {"十六窗口", 4, 4, true},
                                         {"十八窗口", 3, 6, false},  {"二十五窗口", 5, 5, false},
                                         {"三十六窗口", 6, 6, true}, {"六十四窗口", 8, 8, true}};
    for (const bool byButton : {true, false}) {
        for (const Layout& layout : layouts) {
            if (byButton && !layout.hasButton)
                continue;
            QTest::addRow("%s %dx%d", byButton ? "button" : "menu", layout.rows, layout.columns)
                << byButton << QString::fromUtf8(layout.name) << layout.rows << layout.columns;
        }
    }
}

void tst_Layouts::layout() {
    QFETCH(bool, byButton);
    QFETCH(QString, name);
    QFETCH(int, rows);
    QFETCH(int, columns);
    STEP(startAndSignIn());
    STEP(clickButton(byButton ? name : GridMenu));
    if (!byButton)
        STEP(chooseEntry(name));
    COMES(isArranged(rows, columns));
    BECOMES(program().stored(Rows).toInt(), rows);
    BECOMES(program().stored(Columns).toInt(), columns);
    // The button of the layout that is shown is pressed, and no other.
    for (const char* other : {"一窗口", "四窗口", "九窗口", "十六窗口", "三十六窗口", "六十四窗口"}) {
        const QString text = QString::fromUtf8(other);
        QCOMPARE(window().button(text).has(Accessible::State::Checked), text == name);
    }
}

void tst_Layouts::zoom_data() {
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("tiles");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("back");
    QTest::newRow("four, double click") << QStringLiteral("四窗口") << 4 << 3 << QString();
    QTest::newRow("eighteen, double click") << QStringLiteral("十八窗口") << 18 << 8 << QString();
    QTest::newRow("eighteen, Escape") << QStringLiteral("十八窗口") << 18 << 17 << QStringLiteral("Escape");
    QTest::newRow("sixty-four, Space") << QStringLiteral("六十四窗口") << 64 << 63 << QStringLiteral("space");
}

void tst_Layouts::zoom() {
    QFETCH(QString, layout);
    QFETCH(int, tiles);
    QFETCH(int, index);
    QFETCH(QString, back);
    STEP(startAndSignIn());
    STEP(chooseLayout(layout, tiles));
    const QVariant rows = program().stored(Rows);
    const QVariant columns = program().stored(Columns);
    Desktop::doubleClick(window().tile(index).center());
    BECOMES(window().shownTiles(), QVector<int>{index});
    BECOMES(window().tile(index), window().grid());
    BECOMES(program().stored(Zoom).toInt(), index);
    if (back.isEmpty())
        Desktop::doubleClick(window().grid().center());
    else
        Desktop::keys({back});
    BECOMES(window().shownTiles().size(), tiles);
    BECOMES(program().stored(Zoom).toInt(), -1);
    QCOMPARE(program().stored(Rows), rows);
    QCOMPARE(program().stored(Columns), columns);
}

void tst_Layouts::layoutEndsZoom() {
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    Desktop::doubleClick(window().tile(1).center());
    BECOMES(window().shownTiles(), QVector<int>{1});
    STEP(chooseLayout(QStringLiteral("九窗口"), 9));
    COMES(isArranged(3, 3));
}

void tst_Layouts::zoomedVideoIsLarge() {
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("十六窗口"), 16));
    STEP(doubleClickRow(QStringLiteral("东大门出口")));
    QVERIFY(sight::becomesLive(window().tile(1)));
    Desktop::doubleClick(window().tile(1).center());
    BECOMES(window().tile(1), window().grid());
    QVERIFY(sight::becomesLive(window().grid()));
    Desktop::keys({QStringLiteral("Escape")});
    BECOMES(window().shownTiles().size(), 16);
    QVERIFY(sight::becomesLive(window().tile(1)));
    STEP(clickButton(QStringLiteral("关闭所有视频")));
    COMES(sight::isEmpty(window().tile(1)));
}

QTEST_MAIN(tst_Layouts)
#include "tst_Layouts.moc"
