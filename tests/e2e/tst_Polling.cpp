#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include <algorithm>

namespace {

const QString Start = QStringLiteral("开始轮屏");
const QString Stop = QStringLiteral("停止轮屏");
constexpr int Videos = 1;
constexpr int Previews = 2;

struct Group {
    const char* name;
    QStringList ids;
    QVector<int> tiles;
};

/// Some devices of three groups, and their tiles in sixty-four.
const QVector<Group>& groups() {
    static const QVector<Group> table{
        {"园区大门", {QStringLiteral("CAM0001"), QStringLiteral("CAM0002")}, {0, 1}},
        {"一号厂房", {QStringLiteral("CAM0010"), QStringLiteral("CAM0011")}, {9, 10}},
        {"仓库", {QStringLiteral("CAM0023"), QStringLiteral("CAM0024")}, {22, 23}},
    };
    return table;
}

} // namespace

/// The screen polling: groups of devices that take turns on the wall.
class tst_Polling final : public ProgramTest {
    Q_OBJECT
private slots:
    void groupsTakeTurns_data();
    void groupsTakeTurns();
    void entriesFromTheDialog();
    void operatorOpensADevice();
    void nothingToPoll();

private:
    /// Writes settings with the three groups as entries.
    void writeEntries(int seconds, int mode) const;
    /// Starts with those entries.
    void startWithEntries(int mode);
    /// The first devices of the turns so far, by what the program says.
    QStringList turns();
    /// Demands that each group is seen twice, and nobody else meanwhile.
    void watchTurns();
    /// Which of the groups is seen alone with all its pictures now; -1 when none is.
    int groupSeen();
    void stopped();
};

void tst_Polling::writeEntries(int seconds, int mode) const {
    QJsonArray entries;
    for (const Group& group : groups())
        entries += QJsonObject{{QStringLiteral("name"), QString::fromUtf8(group.name)},
                               {QStringLiteral("ipnclist"), QJsonArray::fromStringList(group.ids)}};
    const QJsonObject settings{{QStringLiteral("轮屏列表"), entries},
                               {QStringLiteral("轮屏时间"), seconds},
                               {QStringLiteral("轮屏模式"), mode}};
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/set.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(settings).toJson());
}

void tst_Polling::startWithEntries(int mode) {
    STEP(writeEntries(3, mode));
    STEP(startAndSignIn());
    QCOMPARE(window().shownTiles().size(), 64);
}

QStringList tst_Polling::turns() {
    static const QRegularExpression line(QStringLiteral("getNextPollDevices +\\(\"(\\w+)\""));
    QStringList result;
    auto found = line.globalMatch(program().log());
    while (found.hasNext())
        result += found.next().captured(1);
    return result;
}

int tst_Polling::groupSeen() {
    int seen = -1;
    for (int i = 0; i < groups().size(); ++i) {
        int pictures = 0;
        for (const int tile : groups()[i].tiles) {
            const QRect place = window().tile(tile);
            if (sight::isPicture(place))
                ++pictures;
            else if (!sight::isEmpty(place))
                return -1;
        }
        if (pictures == groups()[i].tiles.size() && seen < 0)
            seen = i;
        else if (pictures > 0)
            return -1;
    }
    return seen;
}

void tst_Polling::watchTurns() {
    // A turn may pass between two looks on a busy machine; that none is left out is told by the program.
    QVector<int> times(groups().size(), 0);
    int last = -1;
    COMES([&] {
        const int seen = groupSeen();
        if (seen >= 0 && seen != last) {
            last = seen;
            ++times[seen];
        }
        return std::all_of(times.cbegin(), times.cend(), [](int count) { return count >= 2; });
    }());
    COMES(turns().size() >= 7);
    const QStringList taken = turns();
    for (int i = 0; i < taken.size(); ++i)
        QCOMPARE(taken[i], groups()[i % groups().size()].ids.first());
}

void tst_Polling::stopped() {
    BECOMES(program().stored(QStringLiteral("poll")).toInt(), 0);
    COMES(!window().button(Start).isNull());
    for (const Group& group : groups()) {
        for (const int tile : group.tiles)
            COMES(sight::isEmpty(window().tile(tile)));
    }
}

void tst_Polling::groupsTakeTurns_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("videos") << Videos;
    QTest::newRow("previews") << Previews;
}

void tst_Polling::groupsTakeTurns() {
    QFETCH(int, mode);
    STEP(startWithEntries(mode));
    STEP(clickButton(Start));
    COMES(!window().button(Stop).isNull());
    BECOMES(program().stored(QStringLiteral("poll")).toInt(), mode);
    STEP(watchTurns());
    QCOMPARE(program().log().contains(QStringLiteral("\"reqtype\":\"avreq\"")), mode == Videos);
    QCOMPARE(program().log().contains(QStringLiteral("\"reqtype\":\"preview\"")), mode == Previews);
    STEP(clickButton(Stop));
    STEP(stopped());
    quit();
}

// The entries of all groups are made at once, and those that are not wanted taken out.
void tst_Polling::entriesFromTheDialog() {
    STEP(startAndSignIn());
    STEP(openSettings(QStringLiteral("轮屏")));
    STEP(clickIn(Settings, QStringLiteral("按分组生成条目")));
    const Accessible dialog = program().dialog(Settings);
    const Accessible list = dialog.find(QStringLiteral("轮屏条目"));
    const auto names = [&list] {
        QStringList result;
        for (const Accessible::Seen& row : list.children())
            result += row.name;
        return result;
    };
    BECOMES(names().size(), 9);
    QCOMPARE(names().mid(0, 3), QStringList({QString::fromUtf8(groups()[0].name), QString::fromUtf8(groups()[1].name),
                                             QString::fromUtf8(groups()[2].name)}));
    for (int left = 8; left >= 3; --left) {
        const QVector<Accessible::Seen> rows = list.children();
        Desktop::click(Program::placeInActive(dialog, rows[3].thing).center());
        COMES(list.children()[3].thing.has(Accessible::State::Focused));
        Desktop::keys({QStringLiteral("Delete")});
        BECOMES(names().size(), left);
    }
    // The interval, by the keyboard.
    const Accessible interval = dialog.find(QStringLiteral("轮屏时间"));
    const QRect place = Program::placeInActive(dialog, interval);
    Desktop::click(place.center() - QPoint(place.width() / 4, 0));
    COMES(interval.has(Accessible::State::Focused));
    Desktop::keys({QStringLiteral("ctrl+a")});
    Desktop::type(QStringLiteral("3"));
    BECOMES(interval.number().value_or(0), 3.0);
    STEP(answer(Settings, QStringLiteral("确定")));
    const QVariantList entries = program().stored(QStringLiteral("轮屏列表")).toList();
    QCOMPARE(entries.size(), 3);
    QCOMPARE(entries[1].toMap().value(QStringLiteral("ipnclist")).toStringList().size(), 13);

    STEP(clickButton(Start));
    COMES(!window().button(Stop).isNull());
    QSet<int> seen;
    COMES([&] {
        for (const Group& group : groups()) {
            if (sight::isPicture(window().tile(group.tiles.last())))
                seen += group.tiles.last();
        }
        return seen.size() == groups().size();
    }());
    STEP(clickButton(Stop));
    STEP(stopped());
    quit();
}

void tst_Polling::operatorOpensADevice() {
    const QString device = QStringLiteral("西大门入口"); // the third tile, in no entry
    STEP(startWithEntries(Videos));
    STEP(clickButton(Start));
    COMES(groupSeen() >= 0);
    // No: it goes on.
    STEP(doubleClickRow(device));
    COMES(program().isActive(Tip));
    QVERIFY(!program().dialog(Tip).find(QStringLiteral("正在轮屏，是否停止轮屏?")).isNull());
    STEP(answer(Tip, QStringLiteral("取消")));
    const int before = turns().size();
    COMES(turns().size() >= before + 2);
    QVERIFY(sight::isEmpty(window().tile(2)));
    QVERIFY(!window().button(Stop).isNull());
    // Yes: it ends, and the device is opened.
    STEP(doubleClickRow(device));
    STEP(answer(Tip, QStringLiteral("确定")));
    STEP(stopped());
    QVERIFY(sight::becomesLive(window().tile(2)));
    quit();
}

void tst_Polling::nothingToPoll() {
    STEP(startAndSignIn());
    STEP(clickButton(Start));
    BECOMES(window().message(), QStringLiteral("还没有轮屏列表，请先在设置中添加"));
    QVERIFY(!window().button(Start).isNull());
    quit();
}

QTEST_MAIN(tst_Polling)
#include "tst_Polling.moc"
