#include "sensor/AcquisitionLock.h"
#include "sensor/OrderBook.h"
#include "sensor/SampleQuery.h"
#include "sensor/SampleWriter.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <ctime>
#include <memory>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::sensor;

/// The file of samples: ranges, buckets, what becomes of old samples, two who use it.
class tst_SensorSampleStore final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void ranges_data();
    void ranges();
    void buckets_data();
    void buckets();
    void badQueries_data();
    void badQueries();
    void partsOfAnExportJoin_data();
    void partsOfAnExportJoin();
    void oldSamplesBecomeMinutes();
    void manyInputs();
    void unkeptAndUnknown();
    void refusedIsStoredLater();
    void damagedFile();
    void oneHoldsTheLock();
    void ordersAreDoneByTheOther();

private:
    void insert(int pid, std::int64_t seconds, double value, bool normal = true);
    static QString joined(const SampleRange& range);

    std::unique_ptr<QTemporaryDir> folder_;
    std::filesystem::path path_;
    std::unique_ptr<SampleFile> file_;
    const Clock clock_;
};

void tst_SensorSampleStore::initTestCase() {
    // Hours that do not begin with those of UTC.
    qputenv("TZ", "Asia/Kolkata");
    tzset();
}

void tst_SensorSampleStore::init() {
    file_.reset();
    folder_ = std::make_unique<QTemporaryDir>();
    path_ = folder_->filePath("samples").toStdString();
    file_ = std::make_unique<SampleFile>(path_);
}

void tst_SensorSampleStore::insert(int pid, std::int64_t seconds, double value, bool normal) {
    SampleFile::Statement statement(*file_,
                                    "insert or replace into samples (pid, time, value, state) values (?, ?, ?, ?)");
    statement.bind(std::int64_t{pid}).bind(seconds * 1000).bind(value).bind(std::int64_t{normal ? 1 : 0}).step();
}

QString tst_SensorSampleStore::joined(const SampleRange& range) {
    QStringList list;
    for (const Sample& sample : range.samples)
        list << QString::fromStdString(epochText(sample.time)) + '=' + QString::number(sample.value);
    return list.join(' ') + (range.more ? " more" : "");
}

void tst_SensorSampleStore::ranges_data() {
    QTest::addColumn<QString>("request");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all") << R"({})"
                         << "100=1 200=2 300=3 400=4";
    QTest::newRow("oldest one") << R"({"begin":"oldest","max":"1"})"
                                << "100=1 more";
    QTest::newRow("newest one") << R"({"end":"latest","max":"1"})"
                                << "400=4 more";
    QTest::newRow("both ends included") << R"({"begin":200,"end":"300"})"
                                        << "200=2 300=3";
    QTest::newRow("first ones from a begin") << R"({"begin":"150","max":2})"
                                             << "200=2 300=3 more";
    QTest::newRow("last ones up to an end") << R"({"end":350,"max":2})"
                                            << "200=2 300=3 more";
    QTest::newRow("local date") << R"({"begin":"1970-01-01 05:35:00"})"
                                << "300=3 400=4";
    QTest::newRow("fraction") << R"({"begin":"200.5","end":400.25})"
                              << "300=3 400=4";
    QTest::newRow("nothing there") << R"({"begin":500})"
                                   << "";
    QTest::newRow("the wrong way round") << R"({"begin":300,"end":200})"
                                         << "";
}

void tst_SensorSampleStore::ranges() {
    QFETCH(QString, request);
    QFETCH(QString, expected);
    for (int i = 1; i <= 4; ++i)
        insert(7, i * 100, i);
    insert(8, 250, 99);
    Json wishes = Json::parse(request.toStdString());
    wishes["inputid"] = {7};
    const auto query = sampleQuery(wishes);
    QVERIFY(query);
    QCOMPARE(joined(readRange(*file_, 7, *query)), expected);
}

void tst_SensorSampleStore::buckets_data() {
    QTest::addColumn<QString>("request");
    QTest::addColumn<QString>("expected");
    // 1700000000 is 03:43:20 of a day in India; hours there begin at half past.
    QTest::newRow("tens") << R"({"begin":"oldest","step":10})"
                          << "1700000000=2 1700000010=5 1700003600=8";
    QTest::newRow("newest tens") << R"({"step":10,"max":2})"
                                 << "1700000010=5 1700003600=8 more";
    QTest::newRow("hours") << R"({"begin":"oldest","step":3600})"
                           << "1699997400=3 1700001000=8";
    QTest::newRow("days") << R"({"begin":"oldest","step":86400})"
                          << "1699986600=4.25";
}

void tst_SensorSampleStore::buckets() {
    QFETCH(QString, request);
    QFETCH(QString, expected);
    const std::int64_t begin = 1'700'000'000;
    insert(7, begin, 1);
    insert(7, begin + 5, 3);
    insert(7, begin + 6, 77, false);
    insert(7, begin + 19, 5);
    insert(7, begin + 3609, 8);
    Json wishes = Json::parse(request.toStdString());
    wishes["inputid"] = {7};
    const SampleRange range = readRange(*file_, 7, *sampleQuery(wishes));
    QCOMPARE(joined(range), expected);
    if (range.samples.size() == 1) {
        QCOMPARE(recordOf(range.samples[0], true),
                 (Json{{"time", "1699986600"}, {"value", 4.25}, {"min", 1.0}, {"max", 8.0}, {"count", 4}}));
    }
}

void tst_SensorSampleStore::badQueries_data() {
    QTest::addColumn<QString>("request");
    QTest::newRow("no inputs") << R"({})";
    QTest::newRow("an input that is a word") << R"({"inputid":["x"]})";
    QTest::newRow("a time that is none") << R"({"inputid":[7],"begin":"yesterday"})";
    QTest::newRow("a date that is none") << R"({"inputid":[7],"begin":"2026-13-01 00:00:00"})";
    QTest::newRow("a time that never comes") << R"({"inputid":[7],"end":1e300})";
    QTest::newRow("no records") << R"({"inputid":[7],"max":0})";
    QTest::newRow("max that is a word") << R"({"inputid":[7],"max":"all"})";
    QTest::newRow("step below zero") << R"({"inputid":[7],"step":-1})";
}

void tst_SensorSampleStore::badQueries() {
    QFETCH(QString, request);
    QVERIFY(!sampleQuery(Json::parse(request.toStdString())));
}

void tst_SensorSampleStore::partsOfAnExportJoin_data() {
    QTest::addColumn<int>("step");
    QTest::newRow("samples") << 0;
    QTest::newRow("buckets") << 60;
    QTest::newRow("local hours") << 3600;
}

void tst_SensorSampleStore::partsOfAnExportJoin() {
    QFETCH(int, step);
    for (int i = 0; i < 500; ++i)
        insert(7, 1'700'000'000 + i * 45, i);
    SampleQuery query;
    query.forward = true;
    query.step = step;
    query.most = 100000;
    const QString whole = joined(readRange(*file_, 7, query));
    query.most = 3;
    QStringList parts;
    for (bool more = true; more;) {
        const SampleRange range = readRange(*file_, 7, query);
        more = range.more;
        query.begin = range.next;
        parts << joined(range).remove(" more");
    }
    QCOMPARE(parts.join(' '), whole);
}

void tst_SensorSampleStore::oldSamplesBecomeMinutes() {
    const std::int64_t day = 86400;
    const std::int64_t now = 1'700'000'000 - 1'700'000'000 % 60;
    for (int i = 0; i < 120; ++i)
        insert(7, now - 8 * day + i, i);
    insert(7, now - 8 * day + 3, 500, false);
    insert(7, now - 6 * day, 42);
    const SampleRetention retention{7, 365};
    QVERIFY(SampleWriter::tidy(*file_, now * 1000, retention));
    QVERIFY(!SampleWriter::tidy(*file_, now * 1000, retention));
    SampleQuery query;
    const SampleRange range = readRange(*file_, 7, query);
    QCOMPARE(range.samples.size(), std::size_t{3});
    QCOMPARE(range.samples[0].time, (now - 8 * day) * 1000);
    QCOMPARE(range.samples[0].low, 0.0);
    QCOMPARE(range.samples[0].high, 59.0);
    QCOMPARE(range.samples[0].count, std::int64_t{59}); // the abnormal one has taken the place of a second
    QCOMPARE(range.samples[2].value, 42.0);
    // A bucket over both counts each reading once.
    query.step = 365 * day;
    std::int64_t count = 0;
    for (const Sample& sample : readRange(*file_, 7, query).samples)
        count += sample.count;
    QCOMPARE(count, std::int64_t{120});
    SampleWriter::tidy(*file_, (now + 358 * day) * 1000, retention);
    SampleQuery all;
    QCOMPARE(readRange(*file_, 7, all).samples.size(), std::size_t{1});
    SampleWriter::tidy(*file_, (now + 400 * day) * 1000, retention);
    QCOMPARE(readRange(*file_, 7, all).samples.size(), std::size_t{0});
}

void tst_SensorSampleStore::manyInputs() {
    constexpr int inputs = 10000;
    {
        SampleWriter writer(path_, clock_, {3650, 36500});
        for (int second = 0; second < 3; ++second) {
            std::vector<Reading> readings;
            for (int pid = 1; pid <= inputs; ++pid)
                readings.push_back(
                    {pid, std::chrono::system_clock::from_time_t(1'700'000'000 + second), pid + 0.5, true});
            writer.take(readings);
        }
        writer.flush();
        SampleQuery query;
        QCOMPARE(joined(readRange(*file_, inputs, query)),
                 QString("1700000000=10000.5 1700000001=10000.5 1700000002=10000.5"));
    }
    SampleFile::Statement count(*file_, "select (select count(*) from samples), (select count(*) from latest)");
    QVERIFY(count.step());
    QCOMPARE(count.whole(0), std::int64_t{3} * inputs);
    QCOMPARE(count.whole(1), std::int64_t{inputs});
}

void tst_SensorSampleStore::unkeptAndUnknown() {
    SampleWriter writer(path_, clock_, {});
    writer.setUnkept({2});
    const auto time = clock_.now();
    writer.take({{1, time, 1, true}, {2, time, 2, true}, {3, time, 3, true}});
    writer.flush();
    QVERIFY(file_->changedByOthers());
    SampleQuery query;
    QCOMPARE(readRange(*file_, 1, query).samples.size(), std::size_t{1});
    QCOMPARE(readRange(*file_, 2, query).samples.size(), std::size_t{0});
    writer.keepOnly({1, 2});
    writer.take({{1, time, 1, true}});
    writer.flush();
    QTRY_COMPARE(readRange(*file_, 3, query).samples.size(), std::size_t{0});
    SampleFile::Statement rows(*file_, "select pid from latest order by pid");
    QVERIFY(rows.step() && rows.whole(0) == 1 && rows.step() && rows.whole(0) == 2 && !rows.step());
}

void tst_SensorSampleStore::refusedIsStoredLater() {
    const auto path = path_.parent_path() / "later" / "samples";
    SampleWriter writer(path, clock_, {});
    writer.take({{1, clock_.now(), 1, true}});
    writer.flush(); // comes back although nothing could be stored
    writer.take({{2, clock_.now(), 2, true}});
    std::filesystem::create_directory(path.parent_path());
    SampleFile file(path);
    const auto stored = [&](int pid) {
        writer.flush(); // which an attempt from before may have failed
        return readRange(file, pid, {}).samples.size();
    };
    QTRY_COMPARE(stored(1), std::size_t{1});
    QTRY_COMPARE(stored(2), std::size_t{1});
}

void tst_SensorSampleStore::damagedFile() {
    file_.reset();
    QFile file(QString::fromStdString(path_.string()));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100000, 'x'));
    file.close();
    std::string notice;
    QVERIFY(SampleFile::prepare(path_, clock_, notice));
    QVERIFY(!notice.empty());
    QCOMPARE(QDir(folder_->path()).entryList({"samples.damaged-*"}).size(), 1);
    notice.clear();
    QVERIFY(SampleFile::prepare(path_, clock_, notice));
    QVERIFY(notice.empty());
    QVERIFY(!SampleFile::prepare(path_ / "below" / "a file", clock_, notice));
}

void tst_SensorSampleStore::oneHoldsTheLock() {
    AcquisitionLock one(folder_->filePath("lock").toStdString());
    AcquisitionLock two(folder_->filePath("lock").toStdString());
    QVERIFY(one.tryTake());
    QVERIFY(!two.tryTake());
    QVERIFY(one.tryTake());
    one.release();
    QVERIFY(two.tryTake());
    QVERIFY(!one.tryTake());
}

void tst_SensorSampleStore::ordersAreDoneByTheOther() {
    SampleFile other(path_);
    OrderBook asking(*file_);
    const auto number = asking.place({OrderBook::Kind::Write, 21, 1.5}, 1'000'000);
    const auto late = asking.place({OrderBook::Kind::Write, 22, 1}, 900'000);
    QVERIFY(!asking.outcome(number));
    QVERIFY(other.changedByOthers());
    std::vector<int> done;
    const auto carryOut = [&](const OrderBook::Order& order) {
        done.push_back(order.pid);
        return order.value == 1.5 ? ServiceCode::WriteFailed : ServiceCode::Done;
    };
    OrderBook(other).serve(1'001'000, carryOut);
    OrderBook(other).serve(1'001'000, carryOut);
    QCOMPARE(done, std::vector<int>{21});
    QVERIFY(asking.outcome(number) == ServiceCode::WriteFailed);
    asking.remove(number);
    QVERIFY(asking.outcome(late) == ServiceCode::WriteFailed); // forgotten
}

QTEST_GUILESS_MAIN(tst_SensorSampleStore)
#include "tst_SensorSampleStore.moc"
