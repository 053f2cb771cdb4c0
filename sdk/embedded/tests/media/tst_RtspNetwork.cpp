#include "DirectDelegate.h"
#include "RecordingListener.h"
#include "media/StreamHub.h"
#include "media/sound/Talk.h"
#include "support/CuttingProxy.h"
#include "support/RtspServer.h"

#include <QTemporaryDir>
#include <QtTest>

#include <deque>
#include <mutex>

using namespace ipncsdk::media;
using namespace std::chrono_literals;
using Manner = CuttingProxy::Manner;

namespace {

constexpr auto limit = 30s; ///< for what ends at once, or after a second of silence

} // namespace

/// A network camera whose network goes away while it is opened, watched or talked to.
class tst_RtspNetwork final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(server_.start()); }
    void opening_data();
    void opening();
    void watching_data();
    void watching();

private:
    /// Through the client's transport, if `carried`.
    HubOptions options(bool carried);
    static Subscription subscription(const CuttingProxy& network, bool talks);
    static void fillRows(bool withTalk);

    QTemporaryDir heard_;
    RtspServer server_{{"--ears", heard_.path()}};
    std::mutex mutex_;
    std::deque<DirectDelegate> delegates_; ///< below mutex_
};

HubOptions tst_RtspNetwork::options(bool carried) {
    HubOptions options;
    options.loopFolder = "unused";
    options.firstPause = 50ms;
    options.longestPause = 200ms;
    if (carried) {
        options.socketDelegate = [this] {
            const std::lock_guard lock(mutex_);
            return &delegates_.emplace_back();
        };
    }
    return options;
}

Subscription tst_RtspNetwork::subscription(const CuttingProxy& network, bool talks) {
    const std::string url = "rtsp://127.0.0.1:" + std::to_string(network.port()) + (talks ? "/hears-pcmu" : "/own");
    Subscription subscription{"camera", Quality::Main, RtspSource{url, "", ""}, !talks, !talks, {}};
    if (talks)
        subscription.talk = std::make_shared<Talk>(8000, 1);
    return subscription;
}

void tst_RtspNetwork::fillRows(bool withTalk) {
    QTest::addColumn<bool>("talks");
    QTest::addColumn<bool>("carried");
    QTest::addColumn<Manner>("manner");
    for (const bool talks : {false, true}) {
        for (const bool carried : {false, true}) {
            for (const Manner manner : {Manner::Closed, Manner::Silent}) {
                if (withTalk || !talks)
                    QTest::addRow("%s%s, %s", talks ? "talking" : "watching", carried ? ", carried" : "",
                                  manner == Manner::Closed ? "closed" : "silent")
                        << talks << carried << manner;
            }
        }
    }
}

void tst_RtspNetwork::opening_data() {
    fillRows(true);
}

void tst_RtspNetwork::opening() {
    QFETCH(bool, talks);
    QFETCH(bool, carried);
    QFETCH(Manner, manner);
    CuttingProxy network(server_.port());
    const auto opens = [&](StreamHub& hub) {
        const auto listener = std::make_shared<RecordingListener>();
        const auto id = hub.subscribe(subscription(network, talks), listener);
        const bool opened = listener->waitFor([](const auto& record) { return !record.opened.empty(); });
        hub.unsubscribe(id);
        return opened;
    };
    HubOptions patient = options(carried);
    patient.networkTimeout = 2min;
    StreamHub hub(patient);
    // Bytes of a conversation's beginning: the answers to DESCRIBE, SETUP and PLAY are longer together.
    for (const int after : {0, 30, 250, 550}) {
        std::optional<StreamError> reason;
        // A camera on a busy machine may need longer for its answer than one has patience with a silent one.
        for (auto patience = manner == Manner::Silent ? 1s : limit; patience <= limit; patience *= 5) {
            HubOptions hurried = options(carried);
            hurried.networkTimeout = patience;
            StreamHub faulty(hurried);
            network.takeAway(manner, after);
            QElapsedTimer time;
            time.start();
            const auto listener = std::make_shared<RecordingListener>();
            faulty.subscribe(subscription(network, talks), listener);
            reason = listener->waitForClose();
            QVERIFY(std::chrono::milliseconds(time.elapsed()) < limit);
            QVERIFY(listener->record().opened.empty());
            if (network.isAway())
                break;
        }
        QVERIFY(network.isAway());
        const bool isTimeOut = reason == StreamError::TimedOut;
        const bool isLoss = reason == StreamError::AddressUnreachable || reason == StreamError::StreamNotFound ||
                            reason == StreamError::ConnectionLost;
        QVERIFY2(manner == Manner::Silent ? isTimeOut : isLoss,
                 qPrintable(QString("%1 after %2").arg(static_cast<int>(*reason)).arg(after)));
        network.bringBack();
        QVERIFY(opens(hub));
    }
}

void tst_RtspNetwork::watching_data() {
    fillRows(false);
}

void tst_RtspNetwork::watching() {
    QFETCH(bool, carried);
    QFETCH(Manner, manner);
    CuttingProxy network(server_.port());
    HubOptions hubOptions = options(carried);
    hubOptions.networkTimeout = 5s;
    StreamHub hub(hubOptions);
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(subscription(network, false), listener);
    QVERIFY(listener->waitForPictures(5));
    // Inside a frame, and inside the four bytes before one.
    for (const int after : {1000, 1}) {
        const std::size_t openings = listener->record().opened.size();
        network.takeAway(manner, after);
        QVERIFY(listener->waitFor([](const auto& record) {
            return !record.stages.empty() && record.stages.back() == OpenStage::Connecting;
        }));
        const auto before = listener->record();
        network.bringBack();
        QVERIFY(listener->waitFor([&](const auto& record) { return record.opened.size() > openings; }));
        QVERIFY(listener->waitForCoded(before.coded.size() + 5));
        QVERIFY(listener->waitForPictures(before.decoded + 5));
        const auto record = listener->record();
        // What is recorded goes on with a key frame, and its times with what there was.
        QVERIFY(record.coded[before.coded.size()].keyFrame);
        QVERIFY(record.timesGoOn());
        QVERIFY(!record.closed);
    }
}

QTEST_GUILESS_MAIN(tst_RtspNetwork)
#include "tst_RtspNetwork.moc"
