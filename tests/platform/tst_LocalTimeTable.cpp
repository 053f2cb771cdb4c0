// The signal handler's own reckoning of local time against the C library's.

#include "platform/linux/LocalTimeTable.h"

#include <QTest>

#include <ctime>

using corvanta::platform::LocalTimeTable;

namespace {

constexpr std::time_t Day = 24 * 60 * 60;
constexpr std::time_t Start = 1709620930; // 2024-03-05 06:42:10 UTC

QByteArray expected(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    char text[64];
    return {text, static_cast<int>(std::strftime(text, sizeof(text), "%Y_%m_%d_%H%M%S.DMP", &local))};
}

} // namespace

class tst_LocalTimeTable : public QObject {
    Q_OBJECT

private slots:
    void agreesWithTheLibrary_data();
    void agreesWithTheLibrary();
    void cleanup() { qunsetenv("TZ"); }
};

void tst_LocalTimeTable::agreesWithTheLibrary_data() {
    QTest::addColumn<QByteArray>("zone");
    // Zones written out, so that no zone files are needed.
    QTest::newRow("utc") << QByteArray("UTC0");
    QTest::newRow("east without summer time") << QByteArray("CST-8");
    QTest::newRow("half hours") << QByteArray("IST-5:30");
    QTest::newRow("north with summer time") << QByteArray("CET-1CEST,M3.5.0,M10.5.0/3");
    QTest::newRow("west with summer time") << QByteArray("PST8PDT,M3.2.0,M11.1.0");
    QTest::newRow("south, half an hour of summer time") << QByteArray("LHST-10:30LHDT-11,M10.1.0,M4.1.0");
    QTest::newRow("beyond the date line") << QByteArray("X-14");
}

void tst_LocalTimeTable::agreesWithTheLibrary() {
    QFETCH(QByteArray, zone);
    qputenv("TZ", zone);
    tzset();
    LocalTimeTable table;
    table.prepare(Start);
    // Over two years with a leap day, at times of day that fall on both sides of every change.
    for (std::time_t time = Start; time < Start + 730 * Day; time += 1787) {
        std::array<char, LocalTimeTable::nameSize> name{};
        table.writeFileName(time, name);
        if (expected(time) != name.data())
            QCOMPARE(QByteArray(name.data()), expected(time));
    }
}

QTEST_GUILESS_MAIN(tst_LocalTimeTable)
#include "tst_LocalTimeTable.moc"
