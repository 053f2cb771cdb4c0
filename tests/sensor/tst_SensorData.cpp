#include "account/AccountTest.h"
#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "logs/LogExport.h"
#include "sensor/DatDownload.h"
#include "sensor/SensorData.h"
#include "sensor/SensorExport.h"
#include "storage/DiskProbe.h"
#include "storage/RecordingStorage.h"

using namespace corvanta::sensor;
using corvanta::json::parseObject;

/// Requests for samples and what becomes of their replies.
class tst_SensorData : public AccountTest {
    Q_OBJECT

private slots:
    void timesAreAskedForInPieces();
    void timesAreStored_data();
    void timesAreStored();
    void liveValues_data();
    void liveValues();
    void samplesComeUnderTheirKey();
    void silenceIsAFailure();
    void aReportIsWrittenWhole_data();
    void aReportIsWrittenWhole();
    void aCancelledReportLeavesNothing();
    void dataFilesAreFetchedTwice();
    void dataFilesStayInTheirFolder_data();
    void dataFilesStayInTheirFolder();

private:
    QVariant field(const char* key, int pid) { return context().inputFields.value(QLatin1String(key), pid); }
    static QVariantMap parametersOf(const FakeSdk::Request& request, const char* type) {
        return parseObject(request.json)["serverreq"].toMap()[QLatin1String(type)].toMap();
    }
    ReportPlan plan(int step) {
        ReportPlan plan;
        InputRecord input;
        input.pid = 7;
        input.name = QStringLiteral("温度<b>");
        plan.inputs = {input};
        plan.step = step;
        plan.end = 100;
        return plan;
    }
};

void tst_SensorData::timesAreAskedForInPieces() {
    SensorData data(context());
    QVector<int> inputs;
    for (int pid = 1; pid <= 4500; ++pid)
        inputs += pid;
    data.requestEarliestTimes(inputs);
    data.requestLatestTimes({1});
    QTRY_COMPARE(sdk_.requests().size(), std::size_t(4));
    const auto requests = sdk_.requests();
    const QVariantMap first = parametersOf(requests[0], "sensordatareq");
    QCOMPARE(first["inputid"].toList().size(), 2000);
    QCOMPARE(first["begin"].toString(), QStringLiteral("oldest"));
    QCOMPARE(first["max"].toString(), QStringLiteral("1"));
    QCOMPARE(first["mode"].toString(), QStringLiteral("all"));
    QCOMPARE(parametersOf(requests[2], "sensordatareq")["inputid"].toList().size(), 500);
    const QVariantMap last = parametersOf(requests[3], "sensordatareq");
    QCOMPARE(last["end"].toString(), QStringLiteral("latest"));
    QVERIFY(!last.contains("begin"));
}

void tst_SensorData::timesAreStored_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("one record")
        << QByteArray(R"({"resp":{"sensordataresp":{"7":{"datas":[{"time":"1732233600.9","value":1}]}}}})")
        << QVariant(1732233600);
    QTest::newRow("none") << QByteArray(R"({"resp":{"sensordataresp":{"7":{"datas":[]}}}})") << QVariant();
    QTest::newRow("two") << QByteArray(R"({"resp":{"sensordataresp":{"7":{"datas":[{"time":"1"},{"time":"2"}]}}}})")
                         << QVariant();
    QTest::newRow("no resp") << QByteArray(R"({"retcode":6})") << QVariant();
    QTest::newRow("no answers") << QByteArray(R"({"resp":{"state":"ok"}})") << QVariant();
    QTest::newRow("no number") << QByteArray(R"({"resp":{"sensordataresp":{"7x":{"datas":[{"time":"9"}]}}}})")
                               << QVariant();
    QTest::newRow("before 1970") << QByteArray(R"({"resp":{"sensordataresp":{"7":{"datas":[{"time":"-9"}]}}}})")
                                 << QVariant();
    QTest::newRow("other shapes") << QByteArray(R"({"resp":{"sensordataresp":[1,{"7":2}]}})") << QVariant();
}

void tst_SensorData::timesAreStored() {
    QFETCH(QByteArray, reply);
    QFETCH(QVariant, stored);
    sdk_.onRequest = [reply](const FakeSdk::Request&) {
        return std::vector<std::string>{reply.toStdString()};
    };
    SensorData data(context());
    int replies = 0;
    connect(&data, &SensorData::sigReport, this, [&](const QString& name, const QVariant& value) {
        data.onReport(QStringLiteral("another"), value.toMap()); // nobody's
        data.onReport(name, value.toMap());
        ++replies;
    });
    data.requestEarliestTimes({7});
    data.requestLatestTimes({7});
    QTRY_COMPARE(replies, 2);
    QCOMPARE(field("earliesttime", 7), stored);
    QCOMPARE(field("latesttime", 7), stored);
}

void tst_SensorData::liveValues_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("a value") << QByteArray(R"({"pid":7,"value":2.5,"state":1,"time":"1732233600.5"})") << true;
    QTest::newRow("abnormal without one") << QByteArray(R"({"pid":7,"state":0,"time":"1732233600"})") << true;
    QTest::newRow("normal without one") << QByteArray(R"({"pid":7,"state":1,"time":"1732233600"})") << false;
    QTest::newRow("no time") << QByteArray(R"({"pid":7,"value":2,"state":1})") << false;
    QTest::newRow("no input") << QByteArray(R"({"value":2,"state":1,"time":"1732233600"})") << false;
    QTest::newRow("infinite") << QByteArray(R"({"pid":7,"value":"-inf","state":1,"time":"1732233600"})") << false;
}

void tst_SensorData::liveValues() {
    QFETCH(QByteArray, value);
    SensorData data(context());
    QSignalSpy changed(&data, &SensorData::sigInputsChanged);
    sdk_.sendToClient(R"({"type":"sensordataupdate","updatetime":"2024-11-22 00:00:00","sensordataupdate":[)" +
                      value.toStdString() + R"(,{"pid":8,"value":1,"state":1,"time":"1732233600"}]})");
    QTRY_COMPARE(changed.size(), 1);
    QFETCH(bool, isTaken);
    QCOMPARE(field("latesttime", 7).isValid(), isTaken);
    QCOMPARE(field("value", 8).toDouble(), 1.0);
}

void tst_SensorData::samplesComeUnderTheirKey() {
    sdk_.onRequest = [](const FakeSdk::Request& request) -> std::vector<std::string> {
        if (request.json.find("\"step\"") != std::string::npos)
            return {R"({"retcode":6,"resp":{"state":"error"}})"};
        return {R"({"retcode":0,"resp":{"sensordataresp":{"7":{"datas":[{"time":"5","value":1}],"more":false}}}})"};
    };
    SensorData data(context());
    connect(&data, &SensorData::sigReport, &data,
            [&](const QString& name, const QVariant& value) { data.onReport(name, value.toMap()); });
    QSignalSpy records(&data, &SensorData::sigRecords);
    QSignalSpy failures(&data, &SensorData::sigQueryFailed);
    const SampleQuery query{7, {}, 1732233600.25, 100, 0};
    const SampleQuery refused{7, {}, QStringLiteral("latest"), 100, 60};
    data.requestSensorData(query);
    data.requestSensorData(refused);
    // In either order: they are answered at the same time.
    QTRY_COMPARE(failures.size(), 1);
    QTRY_COMPARE(records.size(), 1);
    QCOMPARE(failures[0][0].toString(), refused.key());
    QCOMPARE(records[0][0].toString(), query.key());
    QCOMPARE(records[0][1].toList().size(), 1);
    QCOMPARE(parametersOf(sdk_.requests()[0], "sensordatareq")["end"].toString(), QStringLiteral("1732233600.250"));
}

void tst_SensorData::silenceIsAFailure() {
    sdk_.onRequest = [](const FakeSdk::Request&) {
        return std::vector<std::string>();
    };
    context().gateway.setPatience(std::chrono::milliseconds(50));
    SensorData data(context());
    QSignalSpy failures(&data, &SensorData::sigQueryFailed);
    data.requestSensorData({7, {}, QStringLiteral("latest"), 100, 0});
    QTRY_COMPARE(failures.size(), 1);
    QCOMPARE(sdk_.stopped().size(), std::size_t(1));
}

void tst_SensorData::aReportIsWrittenWhole_data() {
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("row");
    QTest::newRow("samples") << 0 << QStringLiteral("txt") << QStringLiteral(", 温度<b> , 1.5 ,  , 正常,");
    QTest::newRow("spans") << 60 << QStringLiteral("txt") << QStringLiteral(", 温度<b> , 1 , 1.5 , 2 , ,");
    QTest::newRow("workbook") << 60 << QStringLiteral("xls") << QString();
}

void tst_SensorData::aReportIsWrittenWhole() {
    QFETCH(int, step);
    QFETCH(QString, suffix);
    sdk_.onRequest = [](const FakeSdk::Request&) -> std::vector<std::string> {
        const std::string piece =
            R"("sensordataresp":{"7":{"datas":[{"time":"60","value":1.5,"min":1,"max":2,"state":1},
                {"time":"x","value":1}]},"8":{"datas":[{"time":"60","value":1}]}})";
        return {R"({"retcode":0,"resp":{"state":"progress","done":1,"total":2,)" + piece + "}}",
                R"({"retcode":0,"resp":{"state":"progress","done":2,"total":2,)" + piece + "}}",
                R"({"retcode":0,"resp":{"state":"ok"}})"};
    };
    SensorExport fetch(context().gateway);
    QSignalSpy done(&fetch, &SensorExport::sigDone);
    QSignalSpy progress(&fetch, &SensorExport::sigProgress);
    fetch.start(plan(step));
    QTRY_COMPARE(done.size(), 1);
    QCOMPARE(progress.size(), 2);
    const auto table = fetch.takeTable();
    QCOMPARE(table->rows.rowCount(), 2); // of another input and of no time there are none
    QCOMPARE(table->rows.columnCount(), table->header.size());
    QVERIFY(fetch.takeTable() == nullptr);
    const QString file = dir_->filePath(QStringLiteral("report.") + suffix);
    {
        LogExport writing(
            table, suffix == QLatin1String("xls") ? LogExport::Format::Workbook : LogExport::Format::Text, file);
        QTRY_COMPARE(writing.state(), LogExport::State::Done);
    }
    QFETCH(QString, row);
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(written.readAll());
    QVERIFY2(row.isEmpty() || text.contains(row), qPrintable(text));
}

void tst_SensorData::aCancelledReportLeavesNothing() {
    sdk_.onRequest = [](const FakeSdk::Request&) -> std::vector<std::string> {
        return {R"({"retcode":0,"resp":{"state":"progress","done":1,"total":2}})"};
    };
    SensorExport fetch(context().gateway);
    QSignalSpy progress(&fetch, &SensorExport::sigProgress);
    QSignalSpy failed(&fetch, &SensorExport::sigFailed);
    fetch.start(plan(0));
    QTRY_COMPARE(progress.size(), 1);
    fetch.cancel();
    QVERIFY(!fetch.isRunning() && fetch.takeTable() == nullptr);
    QCOMPARE(sdk_.stopped().size(), std::size_t(1));
    context().gateway.setPatience(std::chrono::milliseconds(50));
    fetch.start(plan(0));
    QTRY_COMPARE(failed.size(), 1); // silence after the first piece
    QVERIFY(!fetch.isRunning());
}

void tst_SensorData::dataFilesAreFetchedTwice() {
    sdk_.onRequest = [](const FakeSdk::Request&) -> std::vector<std::string> {
        return {R"({"type":"downsdfile","retcode":0,"state":"progress","done":1,"total":2})",
                R"({"type":"downsdfile","retcode":0,"state":"ok","done":2,"total":2})"};
    };
    TaskQueue queue;
    const QString drive = dir_->path() + QLatin1Char('/');
    context().settings.set(corvanta::keys::Drives, QStringList{drive});
    RecordingStorage storage(context().settings, queue, std::make_unique<SystemDisks>(QStringList{drive}));
    DatDownload download(context().gateway, context().events, storage);
    download.setBehind(std::chrono::milliseconds(20));
    QSignalSpy stored(&download, &DatDownload::sigStored);
    emit context().events.sig_DownDatFile(QStringLiteral("dev"), QStringLiteral("20240101.dat"));
    emit context().events.sig_DownDatFile(QStringLiteral("dev"), QStringLiteral("20240101.dat")); // under way
    QTRY_COMPARE(stored.size(), 2);
    const auto requests = sdk_.requests();
    QCOMPARE(requests.size(), std::size_t(2));
    const QVariantMap request = parseObject(requests[1].json);
    QCOMPARE(request["reqtype"].toString(), QStringLiteral("downsdfile"));
    QCOMPARE(request["path"].toString(), QStringLiteral("dat/20240101.dat"));
    const QFileInfo target(request["savepath"].toString());
    QVERIFY(target.isAbsolute() && target.dir().exists());
    QVERIFY(target.absoluteFilePath().endsWith(QStringLiteral("ZEL/dev/Inputdata/20240101.dat")));
}

void tst_SensorData::dataFilesStayInTheirFolder_data() {
    QTest::addColumn<QString>("ipncId");
    QTest::addColumn<QString>("name");
    for (const char* name : {"", ".", "..", "../x", "a/b", "a\\b", "C:x", "x\n", "nul", "x."})
        QTest::newRow(qPrintable(QStringLiteral("name '%1'").arg(name))) << QStringLiteral("dev") << QString(name);
    QTest::newRow("device") << QStringLiteral("../dev") << QStringLiteral("a.dat");
}

void tst_SensorData::dataFilesStayInTheirFolder() {
    QFETCH(QString, ipncId);
    QFETCH(QString, name);
    DatDownload download(context().gateway, context().events, manager_->storage());
    emit context().events.sig_DownDatFile(ipncId, name);
    QVERIFY(sdk_.requests().empty());
}

QTEST_MAIN(tst_SensorData)
#include "tst_SensorData.moc"
