#include "monitor/DropRule.h"

#include <QtTest>

using namespace corvanta::dropRule;

namespace {

/// "1" is the second group's row, "1.2" its third device.
Row row(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('.'));
    return {parts[0].toInt(), parts.size() > 1 ? parts[1].toInt() : -1};
}

QString text(const std::optional<Row>& row) {
    return row ? QStringLiteral("%1.%2").arg(row->group).arg(row->device) : QStringLiteral("-");
}

Side side(const QString& text) {
    return text == QLatin1String("above") ? Side::Above : (text == QLatin1String("on") ? Side::On : Side::Below);
}

} // namespace

/// Three groups of three, one and no devices, and two devices without a group.
class tst_DropRule : public QObject {
    Q_OBJECT
private slots:
    void devices_data();
    void devices();
    void groups_data();
    void groups();

private:
    const Shape shape_{{3, 1, 0, 2}, true};
};

void tst_DropRule::devices_data() {
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("side");
    QTest::addColumn<QString>("over");
    QTest::addColumn<bool>("open");
    QTest::addColumn<QString>("place");
    const auto add = [](const char* dragged, const char* side, const char* over, bool open, const char* place) {
        QTest::addRow("%s %s %s%s", dragged, side, over, open ? "" : " closed")
            << QString::fromLatin1(dragged) << QString::fromLatin1(side) << QString::fromLatin1(over) << open
            << QString::fromLatin1(place);
    };
    add("0.0", "below", "0.2", true, "0.2");
    add("0.0", "above", "0.2", true, "0.1");
    add("0.0", "below", "0.0", true, "-"); // where it is
    add("0.0", "above", "0.1", true, "-");
    add("0.2", "above", "0.0", true, "0.0");
    add("0.2", "on", "0", true, "-"); // the end of its own group
    add("0.0", "on", "0", true, "0.2");
    add("0.1", "below", "0", true, "0.0");
    add("0.1", "below", "0", false, "0.2");
    add("0.0", "on", "1", true, "1.1");
    add("0.0", "below", "1", true, "1.0");
    add("0.0", "above", "2", true, "1.1"); // below the last of the group before
    add("0.0", "on", "2", true, "2.0");
    add("0.0", "above", "0", true, "-"); // above everything
    add("0.0", "above", "3", true, "2.0");
    add("0.0", "on", "3", true, "-"); // not out of the groups
    add("0.0", "below", "3.1", true, "-");
    add("3.1", "above", "0.0", true, "0.0");
}

void tst_DropRule::devices() {
    QFETCH(QString, dragged);
    QFETCH(QString, side);
    QFETCH(QString, over);
    QFETCH(bool, open);
    QTEST(text(placeOfDevice(shape_, row(dragged), row(over), ::side(side), open)), "place");
}

void tst_DropRule::groups_data() {
    QTest::addColumn<int>("dragged");
    QTest::addColumn<QString>("side");
    QTest::addColumn<QString>("over");
    QTest::addColumn<int>("place"); // -1: nowhere
    QTest::newRow("to the top") << 2 << "above"
                                << "0" << 0;
    QTest::newRow("to the end") << 0 << "on"
                                << "" << 2;
    QTest::newRow("not behind the rest") << 0 << "below"
                                         << "3.1" << 2;
    QTest::newRow("behind a group, over its device") << 0 << "above"
                                                     << "1.0" << 1;
    QTest::newRow("on a group is behind it") << 0 << "on"
                                             << "1" << 1;
    QTest::newRow("on itself") << 1 << "on"
                               << "1" << -1;
    QTest::newRow("below the one before it") << 1 << "below"
                                             << "0.2" << -1;
}

void tst_DropRule::groups() {
    QFETCH(int, dragged);
    QFETCH(QString, side);
    QFETCH(QString, over);
    const auto overRow = over.isEmpty() ? std::nullopt : std::optional(row(over));
    QTEST(placeOfGroup(shape_, dragged, overRow, ::side(side)).value_or(-1), "place");
}

QTEST_GUILESS_MAIN(tst_DropRule)
#include "tst_DropRule.moc"
