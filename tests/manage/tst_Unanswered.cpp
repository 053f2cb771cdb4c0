#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/RequestTables.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "base/TaskQueue.h"
#include "base/ui/SendAndReact.h"
#include "manageWidget/FlowRequest.h"
#include "support/FakeSdk.h"

#include <QSignalSpy>
#include <QtTest>

using namespace corvanta;

namespace {

const QString NoReply = QStringLiteral("服务器没有响应，请稍后再试!");
const QString Offline = QStringLiteral("(ipnc offline)");

const char* const Good = R"({"retcode":0,"state":"ok","resp":{"state":"ok"}})";
const char* const Away = R"json({"retcode":10,"resp":{"state":"error","errcode":"(ipnc offline)"}})json";

/// What is heard of a request while the network is away: nothing, the end of its connection, a part of an answer, or
/// what the SDK says of a device that it does not reach.
struct Fault {
    const char* name;
    std::vector<std::string> replies;
    bool isSilence;
};

const std::vector<Fault>& faults() {
    static const std::string part = std::string(Good).substr(0, 30);
    static const std::vector<Fault> all = {
        {"silence", {}, true}, {"nothing", {""}, false}, {"a part", {part}, false}, {"offline", {Away}, false}};
    return all;
}

} // namespace

/// Every kind of request whose answer does not come, or not whole.
class tst_Unanswered final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void requests_data();
    void requests();
    void commands_data();
    void commands();
    void flows_data();
    void flows();

private:
    void reply(const std::vector<std::string>& replies) {
        sdk_.onRequest = [replies](const FakeSdk::Request&) {
            return replies;
        };
    }

    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<SdkGateway> gateway_;
};

void tst_Unanswered::init() {
    sdk_.reset();
    queue_ = std::make_unique<TaskQueue>();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
}

void tst_Unanswered::cleanup() {
    gateway_.reset();
    sdk_.reset();
}

void tst_Unanswered::requests_data() {
    QTest::addColumn<QByteArray>("json");
    const QVariantMap parameters{{QStringLiteral("ipncid"), QStringLiteral("a")},
                                 {QStringLiteral("cmdlist"), QVariantMap{{QStringLiteral("mirror"), 1}}}};
    for (const requests::AccountEntry& entry : requests::accountTable())
        QTest::newRow(qPrintable(entry.operation))
            << QByteArray::fromStdString(requests::accountRequest(entry.operation, parameters));
    for (const requests::DeviceEntry& entry : requests::deviceTable())
        QTest::newRow(qPrintable(entry.operation))
            << QByteArray::fromStdString(requests::deviceRequest(entry.operation, parameters));
}

void tst_Unanswered::requests() {
    QFETCH(QByteArray, json);
    QVERIFY(!json.isEmpty());
    QObject dialog;
    int done = 0;
    QStringList told;
    const auto send = [&] {
        return sendAndReact(*gateway_, json.toStdString(), &dialog,
                            {[&done](const QVariantMap&) { ++done; },
                             [&told](const QString& text) {
                                 told += text;
                             }});
    };
    for (const Fault& fault : faults()) {
        gateway_->setPatience(fault.isSilence ? std::chrono::milliseconds(20) : std::chrono::minutes(5));
        reply(fault.replies);
        told.clear();
        QVERIFY(send());
        QVERIFY(!send()); // not twice meanwhile
        QTRY_COMPARE(told.size(), 1);
        QCOMPARE(told.first() == NoReply, fault.isSilence);
        QVERIFY2(!told.first().isEmpty(), fault.name);
        const int silent = static_cast<int>(sdk_.requests().size());
        // The network is back: the same goes through, and what comes of the first one now is nobody's.
        gateway_->setPatience(std::chrono::minutes(5));
        reply({Good});
        done = 0;
        QVERIFY(send());
        sdk_.respond(silent, Good);
        QTRY_COMPARE(done, 1);
        QTest::qWait(0);
        QCOMPARE(done, 1);
        QCOMPARE(told.size(), 1);
    }
    QCOMPARE(told.first(), serverErrors::text(Offline));
}

void tst_Unanswered::commands_data() {
    QTest::addColumn<QByteArray>("json");
    for (const requests::DirectEntry& entry : requests::directTable())
        QTest::newRow(qPrintable(entry.operation))
            << QByteArray::fromStdString(requests::directCommand(entry.operation));
}

void tst_Unanswered::commands() {
    QFETCH(QByteArray, json);
    QObject dialog;
    int done = 0;
    QStringList told;
    const auto send = [&](const std::string& result) {
        sdk_.configResult = result;
        told.clear();
        return setConfigAndReact(*gateway_, json.toStdString(), &dialog,
                                 {[&done](const QVariantMap&) { ++done; },
                                  [&told](const QString& text) {
                                      told += text;
                                  }});
    };
    for (const char* const broken : {"", R"({"retcode":)", R"({"retcode":10})"}) {
        done = 0;
        gateway_->setPatience(*broken == '\0' ? std::chrono::milliseconds(20) : std::chrono::minutes(5));
        QVERIFY(send(broken));
        QTRY_COMPARE(told.size(), 1);
        QCOMPARE(done, 0);
        QCOMPARE(told.first() == NoReply, *broken == '\0');
        gateway_->setPatience(std::chrono::minutes(5));
        QVERIFY(send(R"({"retcode":0})"));
        QTRY_COMPARE(done, 1);
        QVERIFY(told.isEmpty());
    }
}

void tst_Unanswered::flows_data() {
    QTest::addColumn<QString>("operation");
    for (const char* const operation :
         {"下载SD卡文件", "上传摄像机升级文件", "上传用户文件", "探测网络摄像机", "传感器采集输入数据导出"})
        QTest::newRow(operation) << QString::fromUtf8(operation);
    QTest::newRow("下载用户文件") << QStringLiteral("下载用户文件");
}

// Files and searches, which tell how far they are: the network may be away before the first word or after some.
void tst_Unanswered::flows() {
    QFETCH(QString, operation);
    const std::string json = operation == QStringLiteral("下载用户文件") ? requests::accountRequest(operation)
                                                                         : requests::deviceRequest(operation);
    QVERIFY(!json.empty());
    for (const Fault& fault : faults()) {
        for (const bool begun : {false, true}) {
            FlowRequest flow(*gateway_, fault.isSilence ? 50 : 300000);
            QSignalSpy progress(&flow, &FlowRequest::sigProgress);
            QSignalSpy done(&flow, &FlowRequest::sigDone);
            QSignalSpy failed(&flow, &FlowRequest::sigFailed);
            std::vector<std::string> replies = fault.replies;
            if (begun)
                replies.insert(replies.begin(), R"({"retcode":0,"state":"progress","done":1,"total":2})");
            reply(replies);
            QVERIFY(flow.start(json));
            QTRY_COMPARE(failed.size(), 1);
            QCOMPARE(progress.size(), begun ? 1 : 0);
            QCOMPARE(failed.first().first().toString() == NoReply, fault.isSilence);
            // What is given up is told to the SDK, which throws away what it has so far.
            const int id = static_cast<int>(sdk_.requests().size());
            const std::vector<int> stopped = sdk_.stopped();
            QCOMPARE(!stopped.empty() && stopped.back() == id, fault.isSilence);
            reply({Good});
            QVERIFY(flow.start(json));
            QTRY_COMPARE(done.size(), 1);
            QCOMPARE(failed.size(), 1);
        }
    }
}

QTEST_GUILESS_MAIN(tst_Unanswered)
#include "tst_Unanswered.moc"
