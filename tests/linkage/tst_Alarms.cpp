#include "app/AppManager.h"
#include "base/JsonText.h"
#include "database/SqlHelp.h"
#include "linkage/AlarmHandler.h"
#include "linkage/AlarmInbox.h"
#include "linkage/AlarmPictures.h"
#include "linkage/AlarmSound.h"
#include "support/FakeSdk.h"
#include "support/MessageLog.h"
#include "support/RecordingUi.h"
#include "support/SqliteShell.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace keys = corvanta::keys;
using namespace corvanta::linkage;
using corvanta::json::parseObject;

namespace {

const char* const Lists = R"({"ipnclist":[{"ipncid":"a","nickname":"大门"}],"group":[]})";

QByteArray alarm(const QByteArray& rest, const char* content = "水位") {
    return QByteArray(R"({"type":"trigger","content":")") + content +
           R"(","alarm":{"ipncid":"a","datetime":"2026-01-02 03:04:05")" + rest + "}}";
}

} // namespace

class tst_Alarms final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void effectsComeInOrder_data();
    void effectsComeInOrder();
    void soundsFollowTheSettings_data();
    void soundsFollowTheSettings();
    void aFloodIsHandledWhole();
    void waitingAlarmsSurvive();
    void damagedAlarmsAreSetAside();
    void alarmsAreBounded();
    void picturesAreFound();

private:
    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
};

void tst_Alarms::init() {
    sdk_.reset();
    sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
    dir_ = std::make_unique<QTemporaryDir>();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_VERIFY(!manager_->context().devices.isEmpty());
}

void tst_Alarms::cleanup() {
    manager_.reset();
}

void tst_Alarms::effectsComeInOrder_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QStringList>("expected");
    const QString bar = "bar 2026-01-02 03:04:05 水位";
    const auto log = [](const char* type) {
        return QString("log 大门|2026-01-02 03:04:05|%1|水位").arg(type);
    };
    for (const auto& [threshold, type] :
         std::vector<std::pair<QByteArray, const char*>>{{"0", "一级阈值报警"},
                                                         {"1", "一级阈值报警"},
                                                         {"2", "二级阈值报警"},
                                                         {"3", "三级阈值报警"},
                                                         {"7", "一级阈值报警"},
                                                         {"-1", "一级阈值报警"},
                                                         {R"("x")", "一级阈值报警"}}) {
        QTest::addRow("threshold %s", threshold.constData())
            << alarm(R"(,"trigger":{"threshold":)" + threshold + "}")
            << QStringList{"map", log(type), QString("sound ") + type, bar};
    }
    QTest::newRow("no threshold") << alarm(R"(,"trigger":{})")
                                  << QStringList{"map", log("一级阈值报警"), "sound 一级阈值报警", bar};
    QTest::newRow("other") << alarm("") << QStringList{log("其他报警"), "sound 其他报警", bar};
    QTest::newRow("everything")
        << alarm(
               R"(,"trigger":{"threshold":2,"savelog":"s.dat"},"images":1,"videopath":"D:/ZEL/a/LocalRecord/v.avi")")
        << QStringList{"map",
                       "dat a s.dat",
                       "preview a",
                       log("二级阈值报警"),
                       "sound 二级阈值报警",
                       bar,
                       "video D:/ZEL/a/LocalRecord/v.avi"};
    QTest::newRow("no alarm") << QByteArray(R"({"type":"trigger","content":"c"})")
                              << QStringList{"log ||其他报警|c", "sound 其他报警", "bar  c"};
}

void tst_Alarms::effectsComeInOrder() {
    QFETCH(QByteArray, message);
    QFETCH(QStringList, expected);
    QStringList seen;
    const AppContext context = manager_->context();
    // A row is there as soon as it was written, for who reads by the same connection.
    const auto noteRow = [&] {
        const auto rows = context.database.queryLogs(SqlHelp::FireLog, {}, {}, true, -1, -1);
        if (!rows.isEmpty())
            seen += "log " + rows.constLast().mid(1).join('|');
    };
    AlarmHandler handler({*manager_, context.devices, context.database, context.alarms, [&](const QString& type) {
                              noteRow();
                              seen += "sound " + type;
                          }});
    handler.setVideoHook([&](const QString& path) { seen += "video " + path; });
    connect(manager_.get(), &AppEvents::sig_triggerAlarm, this, [&] { seen += "map"; });
    connect(manager_.get(), &AppEvents::sig_DownDatFile, this,
            [&](const QString& id, const QString& file) { seen += "dat " + id + ' ' + file; });
    connect(manager_.get(), &AppEvents::sig_deal, this, [&](const QString& name, const QVariant& value) {
        if (name == "更新设备预览")
            seen += "preview " + value.toString();
    });
    connect(manager_.get(), &AppEvents::sig_MessageBar, this, [&](const QString& text) { seen += "bar " + text; });
    const QVariantMap map = parseObject(message.toStdString());
    handler.handle(map);
    QCOMPARE(seen, expected);
    // The row holds the message whole, and other processes see it once the event loop went on.
    const QString file = manager_->context().paths.databaseFile();
    QTRY_COMPARE(sqliteShell::run(file, "select count(*) from fireLogs;"), QStringList{"1"});
    const QStringList kept = sqliteShell::run(file, "select alarmMap from fireLogs;");
    QCOMPARE(parseObject(kept.value(0).toStdString()), map);
}

void tst_Alarms::soundsFollowTheSettings_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("begins");
    for (const char* type : {"其他报警", "一级阈值报警", "二级阈值报警", "三级阈值报警"})
        QTest::newRow(type) << type << true << "/nowhere/sound.wav" << true;
    QTest::newRow("off") << "二级阈值报警" << false << "/nowhere/sound.wav" << false;
    QTest::newRow("no file") << "二级阈值报警" << true << "" << false;
    QTest::newRow("no alarm of devices") << "设备异常报警" << true << "/nowhere/sound.wav" << false;
    QTest::newRow("unknown") << "报警" << true << "/nowhere/sound.wav" << false;
}

void tst_Alarms::soundsFollowTheSettings() {
    QFETCH(QString, type);
    QFETCH(bool, on);
    QFETCH(QString, file);
    QFETCH(bool, begins);
    Settings& settings = manager_->context().settings;
    settings.set("是否" + type, on);
    settings.set(type, file);
    AlarmSound sound(settings);
    QSignalSpy begun(&sound, &AlarmSound::sigBegun);
    sound.play(type);
    QCOMPARE(begun.size(), begins ? 1 : 0); // a file that is missing is told to nobody
    // Of several at once the last one is heard, not all of them.
    settings.set(type, file + "2");
    for (int i = 0; i < 50; ++i)
        sound.play(type);
    if (begins) {
        QTRY_COMPARE(begun.size(), 2);
        QCOMPARE(begun.constLast().constFirst().toString(), file + "2");
    }
}

void tst_Alarms::aFloodIsHandledWhole() {
    constexpr int many = 1000;
    QSignalSpy bar(manager_.get(), &AppEvents::sig_MessageBar);
    QSignalSpy told(&manager_->context().alarms, &AlarmInbox::sigChanged);
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < many; ++i)
        sdk_.sendToClient(alarm(R"(,"trigger":{"linkplanid":5,"name":"p"})", QByteArray::number(i)).toStdString());
    QTRY_COMPARE(bar.size(), many);
    QTRY_COMPARE(manager_->context().alarms.count(), many);
    QVERIFY(told.size() <= time.elapsed() / 200 + 2);
    const auto rows = manager_->context().database.queryLogs(SqlHelp::FireLog, {}, {}, true, -1, -1);
    QCOMPARE(rows.size(), many);
    for (int i = 0; i < many; ++i)
        QCOMPARE(rows[i][4], QString::number(i));
    QCOMPARE(manager_->context().alarms.alarms().size(), 1);
    QCOMPARE(manager_->context().alarms.alarms().constFirst().content, QString::number(many - 1));
    QTRY_COMPARE(sqliteShell::run(manager_->context().paths.databaseFile(), "select count(*) from fireLogs;"),
                 QStringList{QString::number(many)});
}

void tst_Alarms::waitingAlarmsSurvive() {
    const QString file = dir_->filePath("config/waiting.json");
    const auto message = [](const QByteArray& rest, const char* content = "c") {
        return AlarmMessage::fromMap(parseObject(alarm(rest, content).toStdString()));
    };
    {
        AlarmInbox inbox(file);
        inbox.add(
            message(R"(,"trigger":{"linkplanid":1,"threshold":3,"name":"p"},"images":["20260102030405-3.jpg"])"),
            "大门");
        inbox.add(message(""), "大门");
        inbox.add(message("", "离线"), "大门");
        inbox.add(message(R"(,"trigger":{"linkplanid":1,"threshold":3,"name":"p"})"), "大门");
        QCOMPARE(inbox.count(), qint64(4));
    }
    AlarmInbox inbox(file);
    QCOMPARE(inbox.count(), qint64(4));
    const auto waiting = inbox.alarms();
    QCOMPARE(waiting.size(), 3);
    QCOMPARE(waiting[0].count, 2);
    QCOMPARE(waiting[0].level, corvanta::AlarmLevel::Three);
    QCOMPARE(waiting[0].images, QStringList{"20260102030405-3.jpg"});
    QCOMPARE(waiting[1].content, QString("离线"));
    inbox.acknowledge({waiting[0].key, "unknown"});
    QCOMPARE(inbox.count(), qint64(2));
    inbox.acknowledgeAll();
    QCOMPARE(inbox.alarms().size(), 0);
}

void tst_Alarms::damagedAlarmsAreSetAside() {
    const QString path = dir_->filePath("waiting.json");
    for (const QByteArray& text : {QByteArray("{\"alarms\":["), QByteArray("[]"), QByteArray("\0\xff", 2)}) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        QCOMPARE(AlarmInbox(path).count(), qint64(0));
        QVERIFY(!QFile::exists(path));
        QCOMPARE(QDir(dir_->path()).entryList({"waiting.json.damaged-*"}).size(), 1);
        QFile::remove(dir_->filePath(QDir(dir_->path()).entryList({"waiting.json.damaged-*"}).constFirst()));
    }
    QFile file(path); // entries of all kinds; the good one is read
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"alarms":[7,{},{"key":"k","count":-5,"level":9,"trigger":3},{"key":"k","count":2}]})");
    file.close();
    QCOMPARE(AlarmInbox(path).count(), qint64(2));
}

void tst_Alarms::alarmsAreBounded() {
    AlarmInbox inbox(dir_->filePath("waiting.json"));
    AlarmMessage message;
    for (int i = 0; i < AlarmInbox::Most + 5; ++i) {
        message.content = QString::number(i);
        inbox.add(message, {});
    }
    const auto waiting = inbox.alarms();
    QCOMPARE(waiting.size(), AlarmInbox::Most);
    QCOMPARE(inbox.count(), qint64(AlarmInbox::Most));
    QCOMPARE(waiting.constLast().content, QString("5"));
}

void tst_Alarms::picturesAreFound() {
    const QString drive = dir_->path() + '/';
    const QString folder = drive + "ZEL/a/Image/2026-01-02/";
    QDir().mkpath(folder);
    for (const char* name : {"20260102030405-1.jpg", "20260102030406-2.jpg", "20260102040000-1.jpg"}) {
        QFile file(folder + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    OpenAlarm one;
    one.ipncId = "a";
    one.lastTime = "2026-01-02 03:04:05";
    one.hasImages = true;
    one.images = QStringList{"20260102030406-2.jpg",       "../../../../etc/passwd", "20260102030405-1.avi",
                             "20260102030405/../../x.jpg", "20260102990000-1.jpg",   "20260102030407-9.jpg"};
    QCOMPARE(picturesOf(one, {drive}), QStringList{folder + "20260102030406-2.jpg"});
    one.images.clear(); // it says that there are some
    QCOMPARE(picturesOf(one, {drive}).size(), 2);
    one.ipncId = "../a";
    QCOMPARE(picturesOf(one, {drive}), QStringList());
}

QTEST_GUILESS_MAIN(tst_Alarms)
#include "tst_Alarms.moc"
