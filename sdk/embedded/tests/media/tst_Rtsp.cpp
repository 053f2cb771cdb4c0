#include "DirectDelegate.h"
#include "RecordingListener.h"
#include "media/StreamHub.h"
#include "media/rtsp/StreamClock.h"
#include "support/RtspServer.h"

#include <QtTest>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

/// Long enough that no loaded machine comes near it where nothing should time out.
constexpr auto ample = std::chrono::minutes(2);

Subscription camera(const std::string& url, bool decoded = true, bool coded = true) {
    return {"camera", Quality::Main, RtspSource{url, "", ""}, decoded, coded, ample};
}

int median(const Picture& picture) {
    std::vector<std::uint8_t> luma(picture.plane(0), picture.plane(1));
    std::nth_element(luma.begin(), luma.begin() + static_cast<std::ptrdiff_t>(luma.size() / 2), luma.end());
    return luma[luma.size() / 2];
}

} // namespace

class tst_Rtsp : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void plays_data();
    void plays();
    void stretchesLimitedRange_data();
    void stretchesLimitedRange();
    void followsTheSize();
    void refuses_data();
    void refuses();
    void passwords_data();
    void passwords();
    void passwordsAreNotLogged();
    void hangingCameraTimesOut();
    void hangingCameraDoesNotHoldUpTheEnd();
    void waitsForSlowCamera();
    void recoversFromRestart();
    void closesWhenThePasswordChanges();
    void sharedByManyThreads();
    void goesThroughTheTransport();
    void transportThatFails();
    void transportIsBrokenOff();
    void clockGoesOn();

private:
    HubOptions options();

    RtspServer server_;
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

HubOptions tst_Rtsp::options() {
    HubOptions options;
    options.loopFolder = "unused";
    options.firstPause = 50ms;
    options.longestPause = 200ms;
    options.networkTimeout = ample;
    options.log = [this](const std::string& line) {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    };
    return options;
}

void tst_Rtsp::initTestCase() {
    QVERIFY(server_.start());
}

void tst_Rtsp::plays_data() {
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("sets in the stream") << QByteArray("/live");
    QTest::newRow("sets in the description alone") << QByteArray("/bare");
    QTest::newRow("sound beside the video") << QByteArray("/both");
}

void tst_Rtsp::plays() {
    QFETCH(QByteArray, path);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(camera(server_.url(path)), listener);
    QVERIFY(listener->waitForCoded(60));
    QVERIFY(listener->waitForPictures(50));
    const QTemporaryDir folder;
    QCOMPARE(hub.snapshot(id, folder.filePath("x.jpg").toStdString()), StreamError::None);
    QCOMPARE(QImage(folder.filePath("x.jpg")).size(), QSize(320, 240));
    hub.unsubscribe(id);
    const auto record = listener->record();
    const std::vector<OpenStage> expected{OpenStage::Information, OpenStage::Connecting, OpenStage::Loading};
    QVERIFY(record.stages == expected);
    QCOMPARE(record.opened.size(), std::size_t{1});
    QCOMPARE(record.opened[0].width, 320);
    QCOMPARE(record.opened[0].height, 240);
    QCOMPARE(record.opened[0].frameRate, 25);
    QCOMPARE(record.opened[0].connectionType, std::string("RTSP/TCP"));
    int keyFrames = 0;
    for (std::size_t index = 0; index < record.coded.size(); ++index) {
        const auto& frame = record.coded[index];
        const QByteArray head(reinterpret_cast<const char*>(frame.bytes.data()), 5);
        keyFrames += frame.keyFrame ? 1 : 0;
        QCOMPARE(head == QByteArray::fromHex("0000000167"), frame.keyFrame);
        QVERIFY(index == 0 || frame.time > record.coded[index - 1].time);
    }
    QVERIFY(record.coded[0].keyFrame);
    QVERIFY(keyFrames >= 2);
}

void tst_Rtsp::stretchesLimitedRange_data() {
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("luma");
    // Both send the sample 235: in limited range that is white.
    QTest::newRow("limited") << QByteArray("/white") << 255;
    QTest::newRow("full") << QByteArray("/full") << 235;
}

void tst_Rtsp::stretchesLimitedRange() {
    QFETCH(QByteArray, path);
    QFETCH(int, luma);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(server_.url(path), true, false), listener);
    QVERIFY(listener->waitForPictures(5));
    QVERIFY(std::abs(median(listener->record().newest) - luma) <= 2);
}

void tst_Rtsp::followsTheSize() {
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(server_.url("/resize")), listener);
    QVERIFY(listener->waitFor([](const auto& record) { return record.sizes.size() >= 4; }));
    QVERIFY(!listener->record().closed);
}

void tst_Rtsp::refuses_data() {
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<int>("reason");
    const auto unreachable = static_cast<int>(StreamError::AddressUnreachable);
    QTest::newRow("H.265") << QByteArray("/h265") << static_cast<int>(StreamError::CodecNotSupported);
    QTest::newRow("Motion JPEG") << QByteArray("/mjpeg") << static_cast<int>(StreamError::CodecNotSupported);
    QTest::newRow("sound alone") << QByteArray("/audio") << static_cast<int>(StreamError::CodecNotSupported);
    QTest::newRow("no such path") << QByteArray("/nothing") << static_cast<int>(StreamError::StreamNotFound);
    QTest::newRow("nobody listens") << QByteArray("refused") << unreachable;
    QTest::newRow("no such host") << QByteArray("rtsp://camera.invalid/x") << unreachable;
    QTest::newRow("no address") << QByteArray("the camera") << unreachable;
    QTest::newRow("file") << QByteArray("file:///etc/passwd") << unreachable;
    QTest::newRow("web page") << QByteArray("http://127.0.0.1/x") << unreachable;
}

void tst_Rtsp::refuses() {
    QFETCH(QByteArray, url);
    QFETCH(int, reason);
    if (url == "refused") {
        QTcpServer free;
        QVERIFY(free.listen(QHostAddress::LocalHost));
        url = "rtsp://127.0.0.1:" + QByteArray::number(free.serverPort()) + "/x";
    }
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    const std::string address = url.startsWith('/') ? server_.url(url) : url.toStdString();
    hub.subscribe(camera(address), listener);
    QCOMPARE(static_cast<int>(listener->waitForClose().value_or(StreamError::None)), reason);
    QTRY_COMPARE_WITH_TIMEOUT(listener.use_count(), 1L, 60000);
    QCOMPARE(listener->record().callsAfterClose, 0);
    QVERIFY(listener->record().opened.empty());
}

void tst_Rtsp::passwords_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("pair");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("accepted");
    for (const QString method : {"basic", "digest"}) {
        const auto row = [&](const char* name) -> QTestData& {
            return QTest::newRow(qPrintable(method + ", " + name)) << method;
        };
        row("fields") << ""
                      << "viewer"
                      << "p@s:s/ %?" << true;
        row("in the URL") << "viewer:p%40s%3As%2F%20%25%3F@"
                          << ""
                          << "" << true;
        row("fields win") << "viewer:wrong@"
                          << "viewer"
                          << "p@s:s/ %?" << true;
        row("wrong") << ""
                     << "viewer"
                     << "wrong" << false;
        row("wrong in the URL") << "viewer:wrong@"
                                << ""
                                << "" << false;
        row("none") << ""
                    << ""
                    << "" << false;
    }
}

void tst_Rtsp::passwords() {
    QFETCH(QString, method);
    QFETCH(QString, pair);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(bool, accepted);
    RtspServer server({"--user", "viewer", "--password", "p@s:s/ %?", "--auth", method});
    QVERIFY(server.start());
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    Subscription subscription = camera(server.url("/live", pair.toUtf8()));
    auto& source = std::get<RtspSource>(subscription.source);
    source.user = user.toStdString();
    source.password = password.toStdString();
    hub.subscribe(subscription, listener);
    QVERIFY(listener->waitFor([](const auto& record) { return record.closed || record.decoded > 0; }));
    QCOMPARE(static_cast<int>(listener->record().closed.value_or(StreamError::None)),
             static_cast<int>(accepted ? StreamError::None : StreamError::PasswordRefused));
}

void tst_Rtsp::passwordsAreNotLogged() {
    const std::lock_guard lock(mutex_);
    QVERIFY(!lines_.empty());
    for (const std::string& line : lines_) {
        const QString text = QString::fromStdString(line);
        QVERIFY2(!text.contains("p@s") && !text.contains("p%40s") && !text.contains("wrong"), line.c_str());
    }
}

void tst_Rtsp::hangingCameraTimesOut() {
    HubOptions hubOptions = options();
    hubOptions.networkTimeout = 500ms;
    StreamHub hub(hubOptions);
    const auto ownLimit = std::make_shared<RecordingListener>();
    const auto hubLimit = std::make_shared<RecordingListener>();
    const auto patient = std::make_shared<RecordingListener>();
    hub.subscribe(camera(server_.url("/hang")), patient);
    Subscription subscription = camera(server_.url("/hang"));
    subscription.openTimeout = 200ms;
    hub.subscribe(subscription, ownLimit);
    subscription.openTimeout.reset();
    hub.subscribe(subscription, hubLimit);
    QCOMPARE(ownLimit->waitForClose(), std::optional(StreamError::TimedOut));
    QCOMPARE(hubLimit->waitForClose(), std::optional(StreamError::TimedOut));
    QVERIFY(!patient->record().closed);
    QCOMPARE(patient->record().stages.back(), OpenStage::Connecting);
}

void tst_Rtsp::hangingCameraDoesNotHoldUpTheEnd() {
    // One never answers, and one never even accepts.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    const std::string mute = "rtsp://127.0.0.1:" + std::to_string(silent.serverPort()) + "/x";
    const auto listener = std::make_shared<RecordingListener>();
    QElapsedTimer timer;
    {
        StreamHub hub(options());
        hub.subscribe(camera(server_.url("/hang")), listener);
        hub.subscribe(camera(mute), std::make_shared<RecordingListener>());
        QVERIFY(listener->waitFor([](const auto& record) {
            return !record.stages.empty() && record.stages.back() == OpenStage::Connecting;
        }));
        const auto id = hub.subscribe(camera(mute + "y"), std::make_shared<RecordingListener>());
        timer.start();
        hub.unsubscribe(id);
    }
    // The network's own limit would be two minutes.
    QVERIFY(timer.elapsed() < 20000);
    QVERIFY(!listener->record().closed);
}

void tst_Rtsp::waitsForSlowCamera() {
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(server_.url("/slow")), listener);
    QVERIFY(listener->waitForPictures(1));
}

void tst_Rtsp::recoversFromRestart() {
    RtspServer server;
    QVERIFY(server.start());
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(server.url("/live")), listener);
    QVERIFY(listener->waitForPictures(5));
    server.stop();
    // Refused connections in between do not end the subscription.
    QVERIFY(listener->waitFor([](const auto& record) { return record.stages.size() > 3; }));
    const auto before = listener->record();
    QVERIFY(server.start());
    QVERIFY(listener->waitFor([](const auto& record) { return record.opened.size() == 2; }));
    QVERIFY(listener->waitForCoded(before.coded.size() + 5));
    QVERIFY(listener->waitForPictures(before.decoded + 5));
    const auto record = listener->record();
    QVERIFY(!record.closed);
    // After the second opening the coded frames begin with a key frame again, and the times go on.
    QVERIFY(record.coded[before.coded.size()].keyFrame);
    QVERIFY(record.timesGoOn());
}

void tst_Rtsp::closesWhenThePasswordChanges() {
    RtspServer open;
    QVERIFY(open.start());
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(open.url("/live")), listener);
    QVERIFY(listener->waitForPictures(1));
    open.stop();
    RtspServer locked({"--user", "a", "--password", "b"});
    QVERIFY(locked.startAt(open.port()));
    QCOMPARE(listener->waitForClose(), std::optional(StreamError::PasswordRefused));
}

void tst_Rtsp::sharedByManyThreads() {
    StreamHub hub(options());
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < 4; ++round) {
                const auto listener = std::make_shared<RecordingListener>();
                const auto id = hub.subscribe(camera(server_.url(round % 2 == 0 ? "/live" : "/bare")), listener);
                if (round != 3) {
                    listener->waitForPictures(2);
                }
                hub.unsubscribe(id);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void tst_Rtsp::goesThroughTheTransport() {
    RtspServer server({"--user", "viewer", "--password", "secret"});
    QVERIFY(server.start());
    std::deque<DirectDelegate> delegates; // grows under the lock, and never moves what it holds
    std::mutex mutex;
    HubOptions hubOptions = options();
    hubOptions.socketDelegate = [&] {
        const std::lock_guard lock(mutex);
        return &delegates.emplace_back();
    };
    {
        StreamHub hub(hubOptions);
        const auto listener = std::make_shared<RecordingListener>();
        hub.subscribe(camera(server.url("/live", "viewer:secret@")), listener);
        QVERIFY(listener->waitForPictures(30));
        QCOMPARE(listener->record().opened[0].connectionType, std::string("RTSP/PROXY"));
        // A connection that is lost is made again with a new object.
        server.stop();
        QVERIFY(listener->waitFor([](const auto& record) { return record.stages.size() > 2; }));
        QVERIFY(server.start());
        QVERIFY(listener->waitFor([](const auto& record) { return record.opened.size() == 2; }));
        const auto wrong = std::make_shared<RecordingListener>();
        hub.subscribe(camera(server.url("/live", "viewer:wrong@")), wrong);
        QCOMPARE(wrong->waitForClose(), std::optional(StreamError::PasswordRefused));
    }
    QVERIFY(delegates.size() >= 3);
    QVERIFY(delegates.front().receivedBytes > 10000);
    for (const DirectDelegate& delegate : delegates) {
        QCOMPARE(delegate.connects.load(), 1);
        QCOMPARE(delegate.closes.load(), 1);
        QCOMPARE(delegate.callsAfterClose.load(), 0);
    }
}

void tst_Rtsp::transportThatFails() {
    DirectDelegate delegate;
    HubOptions hubOptions = options();
    hubOptions.socketDelegate = [&] {
        return &delegate;
    };
    StreamHub hub(hubOptions);
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera("rtsp://not.an.address.invalid/x"), listener);
    QCOMPARE(listener->waitForClose(), std::optional(StreamError::ProxyFailed));
    QCOMPARE(delegate.closes.load(), 1);
    QCOMPARE(delegate.sentBytes.load(), 0L);
}

void tst_Rtsp::transportIsBrokenOff() {
    // The camera accepts and is silent: ending the subscription must not wait for it.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    DirectDelegate delegate;
    {
        HubOptions hubOptions = options();
        hubOptions.socketDelegate = [&] {
            return &delegate;
        };
        StreamHub hub(hubOptions);
        const std::string url = "rtsp://127.0.0.1:" + std::to_string(silent.serverPort()) + "/x";
        hub.subscribe(camera(url), std::make_shared<RecordingListener>());
        QTRY_VERIFY_WITH_TIMEOUT(delegate.sentBytes > 0, 60000);
    }
    QCOMPARE(delegate.closes.load(), 1);
    QVERIFY(delegate.aborted);
}

void tst_Rtsp::clockGoesOn() {
    StreamClock clock;
    const Clock::time_point begin;
    QCOMPARE(clock.at(90s, begin), 0us);
    QCOMPARE(clock.at(90s + 40ms, begin + 35ms), 40000us);
    QCOMPARE(clock.at(90s + 20ms, begin + 70ms), 20000us); // a picture shown before the one that came before it
    QCOMPARE(clock.at(4000s, begin + 100ms), 100000us);    // the camera's clock was set
    QCOMPARE(clock.at(4000s + 40ms, begin + 145ms), 140000us);
    QCOMPARE(clock.at(std::nullopt, begin + 200ms), 200000us);
    clock.restart();
    QCOMPARE(clock.at(7s, begin + 1s), 1000000us);
    // Pictures that come in their order stay in it when the camera sets them back against its sound.
    clock.keepOrder();
    QCOMPARE(clock.at(7s + 40ms, begin + 1040ms), 1040000us);
    QCOMPARE(clock.at(6s + 800ms, begin + 1080ms), 1041000us);
    QCOMPARE(clock.at(6s + 840ms, begin + 1120ms), 1081000us);
    QCOMPARE(clock.at(7s + 840ms, begin + 1160ms), 2081000us);
    clock.restart();
    QCOMPARE(clock.at(5s, begin + 3s), 3000000us);
    QCOMPARE(clock.at(5s - 20ms, begin + 3s), 2980000us);
}

QTEST_GUILESS_MAIN(tst_Rtsp)
#include "tst_Rtsp.moc"
