#include "storage/FoundFiles.h"

#include <QtTest>

using corvanta::storage::FileRecord;
using corvanta::storage::FoundFiles;

Q_DECLARE_METATYPE(corvanta::storage::FoundFiles::Order)
Q_DECLARE_METATYPE(std::vector<int>)

namespace {

FileRecord file(const char* time, const char* device, const char* kind, qint64 size, const char* suffix = "jpg") {
    FileRecord record;
    record.time = QDateTime::fromString(QLatin1String(time), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    record.ipncid = QString::fromUtf8(device);
    record.kind = QLatin1String(kind);
    record.size = size;
    record.name = record.time.toString(QStringLiteral("yyyyMMddhhmmss.")) + QLatin1String(suffix);
    record.path = QStringLiteral("/d/ZEL/%1/%2/%3").arg(record.ipncid, record.kind, record.name);
    return record;
}

/// In another order than that of their times.
FoundFiles sample() {
    return FoundFiles({file("2024-03-05 10:00:00", "A", "Image", 5),                  // 2
                       file("2024-03-04 23:59:59", "B", "Capture", 70),               // 0
                       file("2024-03-05 00:00:00", "C", "LocalRecord", 900, "avi"),   // 1
                       file("2024-03-07 08:00:00", "A", "Capture", 1),                // 4
                       file("2024-03-05 23:59:59", "B", "DeviceRecord", 30, "mp4")}); // 3
}

QString nameOf(const QString& id) {
    if (id == QLatin1String("A"))
        return QStringLiteral("camera 10");
    return id == QLatin1String("B") ? QStringLiteral("camera 9") : QStringLiteral("camera 11");
}

} // namespace

/// What a search has found, in the orders and by the days in which it is shown.
class tst_FoundFiles final : public QObject {
    Q_OBJECT
private slots:
    void orders_data();
    void orders();
    void days();
    void without();
    void lengths();
};

void tst_FoundFiles::orders_data() {
    QTest::addColumn<FoundFiles::Order>("order");
    QTest::addColumn<bool>("descending");
    QTest::addColumn<std::vector<int>>("positions");
    using Order = FoundFiles::Order;
    QTest::newRow("time") << Order::Time << false << std::vector<int>{0, 1, 2, 3, 4};
    QTest::newRow("time, newest first") << Order::Time << true << std::vector<int>{4, 3, 2, 1, 0};
    QTest::newRow("device, numbers by value") << Order::Device << false << std::vector<int>{0, 3, 2, 4, 1};
    QTest::newRow("device, last first") << Order::Device << true << std::vector<int>{1, 2, 4, 0, 3};
    QTest::newRow("kind, as they are listed") << Order::Kind << false << std::vector<int>{0, 4, 2, 1, 3};
    QTest::newRow("name") << Order::Name << true << std::vector<int>{4, 3, 2, 1, 0};
    QTest::newRow("size") << Order::Size << false << std::vector<int>{4, 2, 3, 0, 1};
}

void tst_FoundFiles::orders() {
    QFETCH(FoundFiles::Order, order);
    QFETCH(bool, descending);
    QFETCH(std::vector<int>, positions);
    QCOMPARE(sample().ordered(order, descending, nameOf), positions);
}

void tst_FoundFiles::days() {
    const FoundFiles files = sample();
    const QDate day(2024, 3, 5);
    const auto devices = files.day(day);
    QCOMPARE(devices.size(), std::size_t(3));
    QCOMPARE(devices[0].ipncid, QStringLiteral("A"));
    QCOMPARE(devices[0].files, std::vector<int>{2});
    QCOMPARE(devices[1].files, std::vector<int>{3});
    QCOMPARE(devices[2].files, std::vector<int>{1});
    QVERIFY(files.day(QDate(2024, 3, 6)).empty());
    QCOMPARE(files.nearestDay(QDate(2024, 3, 6), -1), day);
    QCOMPARE(files.nearestDay(QDate(2024, 3, 6), 1), QDate(2024, 3, 7));
    QCOMPARE(files.nearestDay(day, -1), QDate(2024, 3, 4));
    QVERIFY(!files.nearestDay(QDate(2024, 3, 4), -1).isValid());
    QVERIFY(!files.nearestDay(QDate(2024, 3, 7), 1).isValid());
    QCOMPARE(files.lastDay(), QDate(2024, 3, 7));
    QVERIFY(!FoundFiles().lastDay().isValid());
    QCOMPARE(files.bytes(), qint64(1006));
}

void tst_FoundFiles::without() {
    const FoundFiles rest = sample().without({3, 0});
    QCOMPARE(rest.count(), 3);
    QCOMPARE(rest.at(0).ipncid, QStringLiteral("C"));
    QCOMPARE(rest.at(2).size, qint64(1));
    QCOMPARE(sample().without({}).count(), 5);
}

void tst_FoundFiles::lengths() {
    using corvanta::storage::assumedLengths;
    QCOMPARE(assumedLengths({}), std::vector<int>());
    QCOMPARE(assumedLengths({0, 300, 1500}), (std::vector<int>{300, 600, 600}));
    QCOMPARE(assumedLengths({86390, 86390}), (std::vector<int>{0, 10})); // the day ends
}

QTEST_GUILESS_MAIN(tst_FoundFiles)
#include "tst_FoundFiles.moc"
