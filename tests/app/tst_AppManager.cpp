#include "app/AppManager.h"
#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/TcpSocketManage.h"
#include "database/SqlHelp.h"
#include "support/FakeSdk.h"
#include "support/MessageLog.h"
#include "support/RecordingUi.h"

#include <QDate>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace keys = corvanta::keys;

namespace {

QString today() {
    return QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace

class tst_AppManager final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void startUpFailures_data();
    void startUpFailures();
    void messagesBecomeSignals_data();
    void messagesBecomeSignals();
    void signInComesBeforeTheList();
    void emptyLocalListKeepsTheStoredOne();
    void alarmPaths_data();
    void alarmPaths();
    void socketDelegate();
    void crashOfTheSdkSavesAndEnds();
    void signOutEmptiesTheModel();
    void signInAndOutAreWrittenDown();
    void leavingForgetsCachedValues();
    void refreshClearsFirst();
    void automaticSignIn_data();
    void automaticSignIn();
    void repliesReachOnlyTheLiving();
    void destructionIsInOrder();
    void messagesFromManyThreads();

private:
    void start();
    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
};

void tst_AppManager::init() {
    sdk_.reset();
    ui_.tips.clear();
    ui_.signIns.clear();
    dir_ = std::make_unique<QTemporaryDir>();
}

void tst_AppManager::cleanup() {
    manager_.reset();
}

void tst_AppManager::start() {
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
}

void tst_AppManager::startUpFailures_data() {
    QTest::addColumn<bool>("startup");
    QTest::addColumn<bool>("callback");
    QTest::addColumn<int>("boxes");
    QTest::newRow("all well") << true << true << 0;
    QTest::newRow("startup fails") << false << true << 1;
    QTest::newRow("callback fails") << true << false << 1;
    QTest::newRow("both would") << false << false << 1;
}

void tst_AppManager::startUpFailures() {
    QFETCH(bool, startup);
    QFETCH(bool, callback);
    QFETCH(int, boxes);
    sdk_.startupResult = startup ? ipncsdk::emSuccess : ipncsdk::emFailure;
    sdk_.callbackResult = callback ? ipncsdk::emSuccess : ipncsdk::emFailure;
    start();
    QCOMPARE(ui_.tips.size(), boxes);
    if (boxes > 0)
        QCOMPARE(ui_.tips.constFirst(), QStringLiteral("提示|erro!!!"));
    QCOMPARE(sdk_.hasClientCallback(), startup && callback);
    // The program goes on either way.
    QSignalSpy titles(manager_.get(), &AppEvents::updateTitle);
    QTRY_COMPARE(titles.size(), 1);
}

// Every message of the table, and everything that only looks like one: which signals it causes, and what it replies.
void tst_AppManager::messagesBecomeSignals_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<bool>("alarms");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const QByteArray& message, const QStringList& expected,
                        bool alarms = true) {
        QTest::newRow(name) << message << alarms << expected;
    };
    row("freshlist", R"({"type":"freshlist"})",
        {"sig_login", "sLonginAndLogoutEvent", "sig_deviceFresh", "sig_updateList", "sig_updateList2",
         "sig_updateSensorList"});
    row("freshlocal", R"({"type":"freshlocal","freshlocal":{"a":{"ip":"1"}}})", {"sig_freshlocal:1"});
    row("freshlocal empty", R"({"type":"freshlocal","freshlocal":{}})", {"sig_freshlocal:0"});
    row("freshlocal without object", R"({"type":"freshlocal","freshlocal":"x"})", {"sig_freshlocal:0"});
    row("freshlisterror", R"({"type":"freshlisterror"})", {});
    row("logout", R"({"type":"logout"})",
        {"sig_logout", "sig_updateList2", "sig_freshlocal:0", "sLonginAndLogoutEvent"});
    row("sensor values", R"({"type":"sensordataupdate","updatetime":"5","sensordataupdate":[1,2]})",
        {"sig_UpdateSensorInputData:5:2"});
    row("alarm", R"({"type":"trigger","content":"c","alarm":{"x":1}})", {"Onsig_TriggerAlarm", "sig_MessageBar: c"});
    row("alarm not wanted", R"({"type":"trigger","alarm":{"x":1}})", {}, false);
    row("notice", R"({"type":"servicenotice","text":"store set aside"})", {"sig_MessageBar:store set aside"});
    row("unknown", R"({"type":"freshlistx"})", {});
    row("case matters", R"({"type":"FreshList"})", {});
    row("type of another type", R"({"type":["freshlist"]})", {});
    row("no type", R"({"reqid":3})", {});
    row("list", R"(["freshlist"])", {});
    row("not JSON", "freshlist", {});
    row("cut short", R"({"type":"freshlist")", {});
    row("empty", "", {});
    row("bytes", QByteArray("\xff\x00\xfe", 3), {});
    row("deep", QByteArray(100000, '['), {});
}

void tst_AppManager::messagesBecomeSignals() {
    QFETCH(QByteArray, message);
    QFETCH(bool, alarms);
    QFETCH(QStringList, expected);
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[{"ipncid":"a"}],"group":[]})");
    start();
    manager_->context().settings.set(keys::AcceptAlarms, alarms);
    QStringList seen;
    AppManager* const m = manager_.get();
    const auto note = [&seen](const QString& name) {
        return [&seen, name] {
            seen += name;
        };
    };
    connect(m, &AppEvents::sig_login, this, note("sig_login"));
    connect(m, &AppEvents::sig_logout, this, note("sig_logout"));
    connect(m, &AppEvents::sig_deviceFresh, this, note("sig_deviceFresh"));
    connect(m, &AppEvents::sLonginAndLogoutEvent, this, note("sLonginAndLogoutEvent"));
    connect(m, qOverload<>(&AppEvents::sig_updateList), this, note("sig_updateList"));
    connect(m, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this, note("sig_updateList2"));
    connect(m, &AppEvents::sig_updateSensorList, this, note("sig_updateSensorList"));
    connect(m, &AppEvents::Onsig_TriggerAlarm, this, note("Onsig_TriggerAlarm"));
    connect(m, &AppEvents::sig_triggerAlarm, this, note("sig_triggerAlarm"));
    connect(m, qOverload<QVariantMap>(&AppEvents::sig_freshlocal), this,
            [&seen](const QVariantMap& map) { seen += QStringLiteral("sig_freshlocal:%1").arg(map.size()); });
    connect(m, &AppEvents::sig_UpdateSensorInputData, this, [&seen](const QString& time, const QVariantList& list) {
        seen += QStringLiteral("sig_UpdateSensorInputData:%1:%2").arg(time).arg(list.size());
    });
    connect(m, &AppEvents::sig_MessageBar, this,
            [&seen](const QString& text) { seen += QStringLiteral("sig_MessageBar:") + text; });

    QCOMPARE(sdk_.sendToClient(message.toStdString(), "as it was"), std::string("as it was"));
    // A message that is known to cause one signal ends the wait, so that "nothing" is certain too.
    sdk_.sendToClient(R"({"type":"servicenotice","text":"end"})");
    QTRY_COMPARE(seen.isEmpty() ? QString() : seen.constLast(), QStringLiteral("sig_MessageBar:end"));
    seen.removeLast();
    // Who is connected before runs before: of a pair the outer signal may stand behind what it caused.
    std::sort(seen.begin(), seen.end());
    std::sort(expected.begin(), expected.end());
    QCOMPARE(seen, expected);
}

void tst_AppManager::signInComesBeforeTheList() {
    start();
    QStringList order;
    connect(manager_.get(), &AppEvents::sig_login, this, [&] { order += QStringLiteral("login"); });
    connect(manager_.get(), &AppEvents::sig_deviceFresh, this, [&] { order += QStringLiteral("fresh"); });
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(order, (QStringList{QStringLiteral("login"), QStringLiteral("fresh")}));
    QVERIFY(manager_->isSignedIn());
}

void tst_AppManager::emptyLocalListKeepsTheStoredOne() {
    start();
    QSignalSpy spy(manager_.get(), qOverload<QVariantMap>(&AppEvents::sig_freshlocal));
    sdk_.sendToClient(R"({"type":"freshlocal","freshlocal":{"cam":{"ip":"10.0.0.9"}}})");
    sdk_.sendToClient(R"({"type":"freshlocal","freshlocal":{}})");
    QTRY_COMPARE(spy.size(), 2);
    QVERIFY(manager_->localDevices().contains(QStringLiteral("cam")));
    emit manager_->sig_freshlocal();
    QCOMPARE(spy.size(), 3);
    QVERIFY(spy.last().first().toMap().contains(QStringLiteral("cam")));
}

void tst_AppManager::alarmPaths_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<bool>("alarms");
    QTest::addColumn<QString>("reply");
    const QString root = QStringLiteral("ZEL/"); // on the drive
    QTest::newRow("picture") << QByteArray(
                                    R"({"type":"reqalarmpath","ipncid":"c","filename":"a.jpg","date":"2024-03-05"})")
                             << true << root + QStringLiteral("c/Image/2024-03-05/");
    QTest::newRow("video") << QByteArray(
                                  R"({"type":"reqalarmpath","ipncid":"c","filename":"a.avi","date":"2024-03-05"})")
                           << true << root + QStringLiteral("c/LocalRecord/2024-03-05/");
    QTest::newRow("no date") << QByteArray(R"({"type":"reqalarmpath","ipncid":"c","filename":"a.jpg"})") << true
                             << root + QStringLiteral("c/Image/%1/").arg(today());
    QTest::newRow("not wanted") << QByteArray(R"({"type":"reqalarmpath","ipncid":"c","filename":"a.jpg"})") << false
                                << QString();
    QTest::newRow("id that climbs") << QByteArray(
                                           R"({"type":"reqalarmpath","ipncid":"../../etc","filename":"a.jpg"})")
                                    << true << QString();
    QTest::newRow("date that climbs") << QByteArray(
                                             R"({"type":"reqalarmpath","ipncid":"c","date":"..","filename":"a"})")
                                      << true << QString();
    QTest::newRow("no id") << QByteArray(R"({"type":"reqalarmpath","filename":"a.jpg"})") << true << QString();
}

void tst_AppManager::alarmPaths() {
    QFETCH(QByteArray, message);
    QFETCH(bool, alarms);
    QFETCH(QString, reply);
    start();
    // The first one is away.
    const QString drive = dir_->path() + QLatin1Char('/');
    manager_->context().settings.set(keys::Drives, QStringList{QStringLiteral("/no/such/drive/"), drive});
    manager_->context().settings.set(keys::AcceptAlarms, alarms);
    QCOMPARE(QString::fromStdString(sdk_.sendToClient(message.toStdString())),
             reply.isEmpty() ? QString() : drive + reply);
}

void tst_AppManager::socketDelegate() {
    start();
    const char* const question = R"({"type":"getsocketdelegate"})";
    QCOMPARE(sdk_.sendToClient(question), std::string());
    manager_->context().settings.set(keys::Proxy,
                                     QVariantMap{{QStringLiteral("proxyHostName"), QStringLiteral("127.0.0.1")},
                                                 {QStringLiteral("proxyPort"), 1}});
    const std::string reply = sdk_.sendToClient(question);
    // As the SDK reads it: signed, at the width of a pointer.
    auto* const delegate = reinterpret_cast<ipncsdk::TCPSocketDelegate*>(std::stoll(reply));
    QVERIFY(delegate != nullptr);
    QVERIFY(dynamic_cast<TcpSocketManage*>(delegate) != nullptr);
    std::thread([delegate] { delegate->Close(); }).join();
    // A second one stays open until the end: the manager still owns it.
    QVERIFY(!sdk_.sendToClient(question).empty());
}

void tst_AppManager::crashOfTheSdkSavesAndEnds() {
    start();
    manager_->context().settings.set(keys::PackingTime, 33);
    QEventLoop loop; // stands for the application's
    QTimer::singleShot(0, &loop, [this] { sdk_.sendToClient(R"({"type":"sdkcrash"})"); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QFile file(dir_->filePath(QStringLiteral("config/set.json")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("33"));
}

void tst_AppManager::signOutEmptiesTheModel() {
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[{"ipncid":"a"}],"group":[]})");
    start();
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_VERIFY(!manager_->context().devices.isEmpty());
    sdk_.sendToClient(R"({"type":"logout"})");
    QTRY_VERIFY(manager_->context().devices.isEmpty());
    QVERIFY(!manager_->isSignedIn());
    // The next list is all there is.
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[{"ipncid":"b"}],"group":[]})");
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(manager_->context().devices.ipncIds(), QStringList{QStringLiteral("b")});
    // An answer without text is an empty tree and one line.
    sdk_.setDocument(R"({"type":"userinfo"})", "{}");
    sdk_.setDocument(R"({"type":"ipnclist"})", "");
    const MessageLog log;
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_VERIFY(manager_->context().devices.isEmpty());
    QCOMPARE(log.count(QStringLiteral("!!!!!!!!!!!!!!!! GetConfig is empty ！！！！！！！！！！！！！！！！")), 1);
}

// One row for a sign-in however often lists come, one for the sign-out, one for leaving.
void tst_AppManager::signInAndOutAreWrittenDown() {
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    start();
    SqlHelp& database = manager_->context().database;
    const auto rows = [&database] {
        QStringList result;
        const auto found = database.queryLogs(SqlHelp::LoginLog, {}, {}, true, -1, -1);
        for (const QStringList& row : found)
            result += row[1] + (row[2].isEmpty() ? "" : " in") + (row[3].isEmpty() ? "" : " out");
        return result.join(", ");
    };
    QSignalSpy lists(manager_.get(), &AppEvents::sig_login);
    sdk_.sendToClient(R"({"type":"freshlist"})");
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(lists.size(), 2);
    QCOMPARE(rows(), QStringLiteral("13800138000 in"));
    sdk_.sendToClient(R"({"type":"logout"})");
    sdk_.sendToClient(R"({"type":"logout"})");
    QTRY_COMPARE(rows(), QStringLiteral("13800138000 in, 13800138000 out"));
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(lists.size(), 3);
    emit manager_->sig_AppClosed();
    emit manager_->sig_AppClosed(); // a window may close twice
    QCOMPARE(rows(), QStringLiteral("13800138000 in, 13800138000 out, 13800138000 in, 13800138000 out"));
}

void tst_AppManager::leavingForgetsCachedValues() {
    start();
    SqlHelp& database = manager_->context().database;
    database.addInputData(1, "x");
    database.addElectronMap(1, "p", "name");
    manager_->context().operationLog.addOperateLog("u", QDateTime::currentDateTime(), "t", "c", "d");
    emit manager_->sig_AppClosed();
    QCOMPARE(database.getInputData(1) + database.getElectronMap(1).mapname, QString());
    QCOMPARE(database.queryLogs(SqlHelp::OperateLog, {}, {}, true, -1, -1).size(), 1);
    QVERIFY(QFileInfo::exists(dir_->filePath("dataBase.db")));
}

void tst_AppManager::refreshClearsFirst() {
    start();
    QSignalSpy lists(manager_.get(), qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList));
    manager_->refreshList(QString());
    QCOMPARE(lists.size(), 0);
    manager_->refreshList(QStringLiteral("刷新"));
    QCOMPARE(lists.size(), 1);
    QVERIFY(lists.first().first().toList().isEmpty());
    manager_->refreshLocalList(QStringLiteral("刷新"));
    QStringList types;
    for (const std::string& config : sdk_.configs())
        types += corvanta::json::parseObject(config).value(QStringLiteral("type")).toString();
    QCOMPARE(types, (QStringList{"freshlist", "freshlist", "freshlocal"}));
}

void tst_AppManager::automaticSignIn_data() {
    QTest::addColumn<QByteArray>("flags");
    QTest::addColumn<bool>("signsIn");
    QTest::newRow("none") << QByteArray() << false;
    QTest::newRow("both") << QByteArray(R"({"autoLogin":true,"savePassword":true})") << true;
    QTest::newRow("password only") << QByteArray(R"({"autoLogin":false,"savePassword":true})") << false;
    QTest::newRow("automatic only") << QByteArray(R"({"autoLogin":true,"savePassword":false})") << false;
    QTest::newRow("damaged") << QByteArray("{\"autoLogin\":true,") << false;
}

void tst_AppManager::automaticSignIn() {
    QFETCH(QByteArray, flags);
    QFETCH(bool, signsIn);
    if (!flags.isEmpty()) {
        QDir(dir_->path()).mkpath(QStringLiteral("config"));
        QFile file(dir_->filePath(QStringLiteral("config/account.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(flags);
    }
    start();
    QSignalSpy titles(manager_.get(), &AppEvents::updateTitle);
    QTRY_COMPARE(titles.size(), 1); // comes in the same step
    QCOMPARE(ui_.signIns, signsIn ? QList<bool>{true} : QList<bool>{});
}

void tst_AppManager::repliesReachOnlyTheLiving() {
    start();
    SdkGateway& gateway = manager_->context().gateway;
    int replies = 0;
    auto receiver = std::make_unique<QObject>();
    const auto ask = [&] {
        return gateway.request(corvanta::requests::accountRequest(QStringLiteral("获取个人信息")), receiver.get(),
                               [&replies](const QVariantMap& reply) {
                                   if (reply.value(QStringLiteral("n")).toInt() == 7)
                                       ++replies;
                               });
    };
    const int first = ask();
    const int second = ask();
    QVERIFY(first > 0 && second > first);
    sdk_.respond(first, R"({"n":7})");
    QTRY_COMPARE(replies, 1);
    sdk_.respond(second, R"({"n":7})"); // is on its way while the receiver goes
    receiver.reset();
    QSignalSpy notices(manager_.get(), &AppEvents::sig_MessageBar);
    sdk_.sendToClient(R"({"type":"servicenotice","text":"end"})");
    QTRY_COMPARE(notices.size(), 1);
    QCOMPARE(replies, 1);
    // A request that the SDK refuses has no id.
    sdk_.nextId = 0;
    QCOMPARE(gateway.request("{}", this, {}), 0);
}

void tst_AppManager::destructionIsInOrder() {
    const MessageLog log;
    start();
    manager_->context().settings.set(keys::PackingTime, 44);
    manager_.reset();
    QCOMPARE(log.count(QStringLiteral("~AppManager()")), 1);
    QCOMPARE(sdk_.cleanups(), 1);
    QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("config/set.json"))));
}

// The SDK's threads and the GUI thread's changes at once; ThreadSanitizer watches.
void tst_AppManager::messagesFromManyThreads() {
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[{"ipncid":"a"}],"group":[]})");
    start();
    std::atomic<int> done{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, &done] {
            for (int n = 0; n < 50; ++n) {
                sdk_.sendToClient(R"({"type":"freshlist"})");
                sdk_.sendToClient(R"({"type":"freshlocal","freshlocal":{"a":{}}})");
                sdk_.sendToClient(R"({"type":"reqalarmpath","ipncid":"c","filename":"a.jpg"})");
                sdk_.sendToClient(R"({"type":"getsocketdelegate"})");
            }
            ++done;
        });
    }
    int n = 0;
    while (done < 4) {
        manager_->context().settings.set(keys::Proxy, ++n % 2 == 0 ? QVariantMap{{QStringLiteral("proxyPort"), n}}
                                                                   : QVariantMap());
        manager_->context().settings.set(keys::Drives, QStringList{QString::number(n)});
        QCoreApplication::processEvents();
    }
    for (std::thread& thread : threads)
        thread.join();
    QTRY_VERIFY(manager_->isSignedIn());
}

QTEST_GUILESS_MAIN(tst_AppManager)
#include "tst_AppManager.moc"
