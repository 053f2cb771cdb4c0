#include "account/ui/LoginDialog.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/TipDialog.h"
#include "database/SqlHelp.h"
#include "linkage/AlarmInbox.h"
#include "monitor/MainWindowTest.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "recording/Recorder.h"
#include "storage/RecordingStorage.h"
#include "video/ui/ItemVideo.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include <thread>

namespace {

const QString NoReply = QStringLiteral("服务器没有响应，请稍后再试!");

/// Each on threads of its own, all at once; returns when all have ended, and lets the window live meanwhile.
void runTogether(const std::vector<std::function<void()>>& tasks) {
    std::atomic<int> running{static_cast<int>(tasks.size())};
    std::vector<std::thread> threads;
    for (const auto& task : tasks) {
        threads.emplace_back([&task, &running] {
            task();
            --running;
        });
    }
    while (running > 0)
        QCoreApplication::processEvents();
    for (std::thread& thread : threads)
        thread.join();
    QCoreApplication::processEvents();
}

TipDialog* openTip() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        auto* const tip = qobject_cast<TipDialog*>(window);
        if (tip != nullptr && tip->isVisible())
            return tip;
    }
    return nullptr;
}

} // namespace

/// An SDK that does not keep to what was agreed: the window's state is right afterwards, and nothing is waited for
/// without end.
class tst_SdkFaults final : public MainWindowTest {
    Q_OBJECT
private slots:
    void speaksAfterTheStop();
    void reportsInAnyOrder_data();
    void reportsInAnyOrder();
    void answersTwice_data();
    void answersTwice();
    void speaksFromManyThreads();
    void neverSpeaks();
    void neverAnswersADialog();
    void neverTakesASnapshot();
    void speaksAfterTheEnd();

private:
    const char* deviceList() const override {
        return R"({"ipnclist":[{"ipncid":"a","name":"A","type":"video","online":true},
                   {"ipncid":"b","name":"B","type":"video","online":true},
                   {"ipncid":"c","name":"C","type":"video","online":true}],
                   "group":[{"id":"1","name":"一组","ipnclist":["a","b","c"]}]})";
    }
    /// What the SDK may say of a request at any time, with the id of that or of another one.
    std::vector<std::string> anything(int id) const;
    bool isOpen(const QString& ipncId) const { return manager_->context().devices.device(ipncId)->videoOpen; }
};

std::vector<std::string> tst_SdkFaults::anything(int id) const {
    const std::string begin = "{\"reqid\":" + std::to_string(id) + ",";
    const std::string picture = std::to_string(reinterpret_cast<std::intptr_t>(picture_.data()));
    return {begin + R"("type":"avopen","contype":"LOOP","avparam":{"framerate":25,"weidth":64,"height":36}})",
            begin + R"("type":"avstate","state":1})",
            begin + R"("type":"decodevideodata","w":64,"h":36,"data":)" + picture + "}",
            begin + R"("type":"videodata","len":64,"data":)" + picture + "}",
            begin + R"("type":"avclose","retcode":12})",
            begin + R"("type":"preview","retcode":0})",
            "{",
            ""};
}

void tst_SdkFaults::speaksAfterTheStop() {
    picture_.assign(64 * 36 * 3 / 2, 128);
    const int old = openAndRun(QStringLiteral("a"));
    window_->recorder().start(QStringLiteral("b"));
    const int recording = lastId();
    window_->live().open(QStringLiteral("a")); // ends it
    window_->recorder().stop(QStringLiteral("b"));
    QTRY_COMPARE(sdk_.stopped(), (std::vector<int>{old, recording}));
    const int now = openAndRun(QStringLiteral("a"));
    for (const int id : {old, recording, now}) {
        for (const std::string& message : anything(id)) {
            sdk_.respond(old, message);
            sdk_.respond(recording, message);
        }
    }
    sdk_.sendToClient(R"({"type":"servicenotice","text":"behind them"})");
    QTRY_COMPARE(message(), QStringLiteral("behind them"));
    QCOMPARE(tile(0).requestId(), now);
    QCOMPARE(tile(0).text(), QStringLiteral("打开成功"));
    QCOMPARE(tile(0).frameSize().width, 0U);
    QVERIFY(isOpen(QStringLiteral("a")));
    QCOMPARE(window_->recorder().state(QStringLiteral("b")), Recorder::State::Off);
    QCOMPARE(window_->recorder().file(QStringLiteral("b")), QString());
}

void tst_SdkFaults::reportsInAnyOrder_data() {
    QTest::addColumn<QByteArray>("letters"); ///< o: it is open, s: it is being made, c: it has ended, p: a picture
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("open");
    QTest::newRow("opened thrice") << QByteArray("sooo") << "打开成功" << true;
    QTest::newRow("closed thrice") << QByteArray("socccc") << "打开失败(12)" << false;
    QTest::newRow("opened after the end") << QByteArray("sopcop") << "打开失败(12)" << false;
    QTest::newRow("ended before it was open") << QByteArray("cso") << "打开失败(12)" << false;
    QTest::newRow("made after it was open") << QByteArray("pospo") << "打开成功" << true;
    QTest::newRow("made after the end") << QByteArray("ocs") << "打开失败(12)" << false;
}

void tst_SdkFaults::reportsInAnyOrder() {
    QFETCH(QByteArray, letters);
    QFETCH(bool, open);
    picture_.assign(64 * 36 * 3 / 2, 128);
    window_->live().open(QStringLiteral("a"));
    const int id = lastId();
    const std::vector<std::string> said = anything(id);
    for (const char letter : letters)
        sdk_.respond(id, said[QByteArray("osp?c").indexOf(letter)]);
    sdk_.sendToClient(R"({"type":"servicenotice","text":"behind them"})");
    QTRY_COMPARE(message(), QStringLiteral("behind them"));
    QTEST(tile(0).text(), "text");
    QCOMPARE(tile(0).requestId(), open ? id : 0);
    QCOMPARE(isOpen(QStringLiteral("a")), open);
    if (!open)
        QCOMPARE(tile(0).frameSize().width, 0U);
    // It is opened again as if nothing had been, or ended by one click.
    window_->live().open(QStringLiteral("a"));
    QCOMPARE(lastId() != id, !open);
    QCOMPARE(sdk_.stopped(), open ? std::vector<int>{id} : std::vector<int>());
}

void tst_SdkFaults::answersTwice_data() {
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("accepted");
    const QByteArray yes = R"({"retcode":0,"resp":{"state":"ok"}})";
    const QByteArray no = R"({"retcode":12,"resp":{"state":"error","errcode":"busy"}})";
    QTest::newRow("yes, then no") << yes << no << true;
    QTest::newRow("no, then yes") << no << yes << false;
    QTest::newRow("no, then no") << no << no << false;
}

void tst_SdkFaults::answersTwice() {
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(bool, accepted);
    LoginDialog dialog(manager_->context(), false);
    QSignalSpy ended(&dialog, &QDialog::accepted);
    dialog.show();
    dialog.findChild<QLineEdit*>(QStringLiteral("phoneNumber"))->setText(QStringLiteral("13800138000"));
    dialog.findChild<QLineEdit*>(QStringLiteral("phonePassword"))->setText(QStringLiteral("12345678"));
    dialog.findChild<QAbstractButton*>(QStringLiteral("signIn"))->click();
    const int id = lastId();
    for (const QByteArray& reply : {first, second, second})
        sdk_.respond(id, reply.toStdString());
    QTRY_VERIFY(accepted ? ended.size() == 1 : openTip() != nullptr);
    int tips = 0;
    for (; openTip() != nullptr; ++tips) {
        openTip()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    QCOMPARE(tips, accepted ? 0 : 1);
    QCOMPARE(ended.size(), accepted ? 1 : 0);
    QCOMPARE(dialog.isVisible(), !accepted);
}

// Every report, every message and pictures from eight threads, while the operator works.
void tst_SdkFaults::speaksFromManyThreads() {
    constexpr int speakers = 4;
    constexpr int rounds = 40;
    picture_.assign(64 * 36 * 3 / 2, 128);
    window_->live().open(QStringLiteral("a"));
    const int first = lastId();
    window_->recorder().start(QStringLiteral("b"));
    const int second = lastId();
    std::vector<std::function<void()>> tasks;
    for (int n = 0; n < speakers; ++n) {
        tasks.emplace_back([this, first, second] {
            for (int round = 0; round < rounds; ++round) {
                for (const int id : {first, second}) {
                    for (const std::string& message : anything(id))
                        sdk_.respond(id, message);
                }
            }
        });
        tasks.emplace_back([this, n] {
            for (int round = 0; round < rounds; ++round) {
                const std::string text = std::to_string(n) + "." + std::to_string(round);
                sdk_.sendToClient(R"({"type":"trigger","content":")" + text +
                                  R"(","alarm":{"ipncid":"c","datetime":"2026-01-02 03:04:05"}})");
                for (const char* type : {"freshlist", "freshuserinfo", "sensordataupdate", "freshlisterror", "?"})
                    sdk_.sendToClient(R"({"type":")" + std::string(type) + R"("})");
            }
        });
    }
    QTimer operatorsHand;
    int step = 0;
    connect(&operatorsHand, &QTimer::timeout, this, [this, &step] {
        ++step;
        window_->grid().setLayout(1 + step % 3, 1 + step % 3, false);
        if (step % 5 == 0)
            window_->live().open(QStringLiteral("a"));
        if (step % 7 == 0)
            window_->recorder().stop(QStringLiteral("b"));
    });
    operatorsHand.start(1);
    runTogether(tasks);
    operatorsHand.stop();
    QVERIFY(step > 0);
    // Every alarm is there, once.
    constexpr int all = speakers * rounds;
    QTRY_COMPARE(manager_->context().alarms.count(), qint64(all));
    QTRY_COMPARE(manager_->context().database.queryLogs(SqlHelp::FireLog, {}, {}, true, -1, -1).size(), all);
    // And the window does what it is told.
    QTRY_COMPARE(tree().model()->rowCount(), 1);
    window_->live().stopAll();
    window_->grid().setLayout(2, 2, false);
    QVERIFY(!isOpen(QStringLiteral("a")));
    const int id = openAndRun(QStringLiteral("a"));
    sendPicture(id, 64, 36);
    QTRY_COMPARE(tile(0).frameSize().width, 64U);
}

void tst_SdkFaults::neverSpeaks() {
    manager_->context().gateway.setPatience(std::chrono::milliseconds(50));
    window_->live().open(QStringLiteral("a"));
    const int video = lastId();
    window_->live().openPreview(QStringLiteral("b"));
    QTRY_COMPARE(tile(0).text(), NoReply);
    QTRY_COMPARE(tile(1).text(), NoReply);
    // The request goes on: what comes late is shown all the same.
    report(video, R"("type":"avstate","state":0)");
    QTRY_COMPARE(tile(0).text(), QStringLiteral("正在获取视频信息..."));
    report(video, R"("type":"avopen","contype":"LOOP","avparam":{"framerate":25})");
    QTRY_COMPARE(tile(0).text(), QStringLiteral("打开成功"));
    QTRY_COMPARE(tile(0).requestId(), video);
    // One that has spoken is not said to be silent, and one that was ended says nothing.
    window_->live().open(QStringLiteral("c"));
    const int third = lastId();
    report(third, R"("type":"avstate","state":1)");
    QTRY_COMPARE(tile(2).text(), QStringLiteral("正在建立视频连接..."));
    window_->live().open(QStringLiteral("b"));
    window_->live().open(QStringLiteral("b"));
    QTest::qWait(100); // twice the patience
    QCOMPARE(tile(2).text(), QStringLiteral("正在建立视频连接..."));
    QCOMPARE(tile(1).text(), QString());
    // The program ends at once, whatever it still waits for.
    window_->recorder().start(QStringLiteral("b"));
    manager_->context().gateway.setPatience(std::chrono::minutes(5));
    window_->live().open(QStringLiteral("b"));
    QElapsedTimer clock;
    clock.start();
    stop();
    QVERIFY(clock.elapsed() < 10000);
}

void tst_SdkFaults::neverAnswersADialog() {
    manager_->context().gateway.setPatience(std::chrono::milliseconds(50));
    LoginDialog dialog(manager_->context(), false);
    dialog.show();
    dialog.findChild<QLineEdit*>(QStringLiteral("phoneNumber"))->setText(QStringLiteral("13800138000"));
    dialog.findChild<QLineEdit*>(QStringLiteral("phonePassword"))->setText(QStringLiteral("12345678"));
    auto* const button = dialog.findChild<QAbstractButton*>(QStringLiteral("signIn"));
    button->click();
    QVERIFY(!button->isEnabled());
    QTRY_VERIFY(openTip() != nullptr);
    QCOMPARE(openTip()->text(), NoReply);
    openTip()->close();
    QTRY_VERIFY(button->isEnabled());
    QVERIFY(dialog.isVisible());
}

void tst_SdkFaults::neverTakesASnapshot() {
    manager_->context().settings.set(corvanta::keys::DriveFolders, QStringList{dir_->path()});
    manager_->storage().prepareDrives();
    openAndRun(QStringLiteral("a"));
    sdk_.configResult.clear();
    manager_->context().gateway.setPatience(std::chrono::milliseconds(50));
    emit tile(0).sigMenuAction(0, TileAction::Snapshot);
    QTRY_COMPARE(message(), QStringLiteral("抓拍失败：") + NoReply);
}

void tst_SdkFaults::speaksAfterTheEnd() {
    picture_.assign(64 * 36 * 3 / 2, 128);
    window_->live().open(QStringLiteral("a"));
    window_->live().openPreview(QStringLiteral("b"));
    window_->recorder().start(QStringLiteral("c"));
    std::vector<FakeSdk::Request> open = requests();
    stop();
    std::vector<std::function<void()>> tasks;
    for (const FakeSdk::Request& request : open) {
        tasks.emplace_back([this, &request] {
            for (const std::string& message : anything(request.id))
                request.callback(message);
        });
        tasks.emplace_back([this] {
            for (const char* type : {"freshlist", "trigger", "logout", "reqalarmpath", "getsocketdelegate"})
                QCOMPARE(sdk_.sendToClient(R"({"type":")" + std::string(type) + R"("})", "as it was"),
                         std::string("as it was"));
        });
    }
    runTogether(tasks);
    // Another start finds everything as the last one left it.
    start();
    QTRY_COMPARE(window_->recorder().wanted(), QStringList{QStringLiteral("c")});
}

QTEST_MAIN(tst_SdkFaults)
#include "tst_SdkFaults.moc"
