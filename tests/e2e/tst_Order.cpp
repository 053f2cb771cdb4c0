#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString Moved = QStringLiteral("东大门出口");
} // namespace

/// Devices and groups dragged to other places of the tree: the tree and the wall follow, and the service keeps it.
class tst_Order final : public ProgramTest {
    Q_OBJECT
private slots:
    void drag_data();
    void drag();
    void droppedWhereItMayNotGo();
    void byTheMenu();

private:
    enum class Side { Above, Below };
    /// Drags a row to the upper or lower edge of another one and lets it go.
    void dragRow(const QString& dragged, const QString& target, Side side);
};

void tst_Order::dragRow(const QString& dragged, const QString& target, Side side) {
    constexpr int inside = 2; // px from the row's edge
    QRect from;
    QRect to;
    STEP(reveal(dragged, from));
    STEP(reveal(target, to));
    from = window().row(dragged).place();
    QVERIFY(window().treeArea().contains(from.center()));
    const QPoint end(to.center().x(), side == Side::Above ? to.top() + inside : to.bottom() - inside);
    dragTo(from.center(), end);
}

void tst_Order::drag_data() {
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("below");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QStringList>("beginning"); ///< of the group's rows, the group's own first
    QTest::addColumn<int>("tile");              ///< of the camera that runs
    const QString gate = QStringLiteral("园区大门");
    const QString hall = QStringLiteral("一号厂房");
    const QString firstGate = QStringLiteral("东大门入口");
    const QString thirdGate = QStringLiteral("西大门入口");
    const QString firstHall = QStringLiteral("装配一线");
    const QString secondHall = QStringLiteral("装配二线");
    QTest::newRow("device down in its group")
        << Moved << QStringLiteral("西大门出口") << true << gate
        << QStringList{gate + QStringLiteral("  9/9"), firstGate, thirdGate, QStringLiteral("西大门出口"), Moved}
        << 3;
    QTest::newRow("device up in its group")
        << Moved << firstGate << false << gate
        << QStringList{gate + QStringLiteral("  9/9"), Moved, firstGate, thirdGate} << 0;
    QTest::newRow("device into another group")
        << Moved << secondHall << false << hall
        << QStringList{hall + QStringLiteral("  14/14"), firstHall, Moved, secondHall} << 9;
    QTest::newRow("group") << hall << gate << false << hall
                           << QStringList{hall + QStringLiteral("  13/13"), firstHall, secondHall} << 14;
}

void tst_Order::drag() {
    QFETCH(QString, dragged);
    QFETCH(QString, target);
    QFETCH(bool, below);
    QFETCH(QString, group);
    QFETCH(QStringList, beginning);
    QFETCH(int, tile);
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("十六窗口"), 16));
    QCOMPARE(window().tileOfDevice(Moved), 1);
    STEP(doubleClickRow(Moved));
    QVERIFY(sight::becomesLive(window().tile(1)));

    const auto groupsBeginning = [&] {
        const QStringList rows = window().rows();
        return rows.mid(rows.indexOf(beginning.first()), beginning.size());
    };
    STEP(dragRow(dragged, target, below ? Side::Below : Side::Above));
    BECOMES(groupsBeginning(), beginning);
    if (group == dragged)
        QCOMPARE(window().rows().first(), beginning.first());
    BECOMES(window().tileOfDevice(Moved), tile);
    QVERIFY(sight::becomesLive(window().tile(tile)));
    COMES(sight::isEmpty(window().tile(1)));
    // It is the stream that ran, not another one.
    QCOMPARE(program().log().count(QStringLiteral("\"avreq\":")), 1);

    const QStringList rows = window().rows();
    STEP(quit());
    STEP(start());
    STEP(signIn());
    QCOMPARE(window().rows(), rows);
    QCOMPARE(window().tileOfDevice(Moved), tile);
    QVERIFY(sight::becomesLive(window().tile(tile)));
    quit();
}

// A device cannot stand above all groups.
void tst_Order::droppedWhereItMayNotGo() {
    STEP(startAndSignIn());
    const QStringList rows = window().rows();
    STEP(dragRow(Moved, QStringLiteral("园区大门"), Side::Above));
    STEP(dragRow(QStringLiteral("西大门入口"), QStringLiteral("西大门出口"), Side::Above)); // where it is
    // What can go is still taken afterwards, and nothing was sent before.
    STEP(dragRow(QStringLiteral("西大门入口"), QStringLiteral("西大门出口"), Side::Below));
    BECOMES(window().rows().indexOf(QStringLiteral("西大门入口")), 4);
    QCOMPARE(window().rows().size(), rows.size());
    QCOMPARE(program().log().count(QStringLiteral("after index ")), 1);
    quit();
}

void tst_Order::byTheMenu() {
    STEP(startAndSignIn());
    QRect place;
    STEP(reveal(Moved, place));
    Desktop::clickRight(place.center());
    STEP(chooseEntry(QStringLiteral("上移")));
    BECOMES(window().rows().indexOf(Moved), 1);
    STEP(reveal(QStringLiteral("园区大门"), place));
    Desktop::clickRight(place.center());
    STEP(chooseEntry(QStringLiteral("下移")));
    BECOMES(window().rows().first(), QStringLiteral("一号厂房  13/13"));
    quit();
}

QTEST_MAIN(tst_Order)
#include "tst_Order.moc"
