#include "DirectDelegate.h"
#include "RecordingListener.h"
#include "Tone.h"
#include "media/StreamHub.h"
#include "media/sound/Talk.h"
#include "support/RtspServer.h"

#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

/// Long enough that no loaded machine comes near it where nothing should time out.
constexpr auto ample = std::chrono::minutes(2);

Subscription watching(const std::string& url, Quality quality = Quality::Light) {
    return {"camera", quality, RtspSource{url, "", ""}, false, true, ample};
}

Subscription talking(const std::string& url, std::shared_ptr<Talk> talk) {
    Subscription subscription = watching(url);
    subscription.coded = false;
    subscription.talk = std::move(talk);
    return subscription;
}

bool isOpen(RecordingListener& listener) {
    return listener.waitFor([](const auto& record) { return !record.opened.empty(); });
}

/// Somebody who says a tone of 440 Hz in real time, as a microphone does, until the object goes.
class Speaker {
public:
    explicit Speaker(std::shared_ptr<Talk> talk)
        : thread_([this, talk = std::move(talk)] {
            const auto words = tone(440, 8000, 8000);
            auto due = std::chrono::steady_clock::now();
            for (std::size_t at = 0; !stop_; at = (at + 400) % words.size()) {
                talk->push(words.data() + at, 800);
                std::this_thread::sleep_until(due += 50ms);
            }
        }) {}
    ~Speaker() {
        stop_ = true;
        thread_.join();
    }
    Speaker(const Speaker&) = delete;
    Speaker& operator=(const Speaker&) = delete;

private:
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

/// A camera whose answers are written down: the next one to each request, a '#' in it for the request's number.
class ScriptedCamera : public QTcpServer {
public:
    explicit ScriptedCamera(QList<QByteArray> answers)
        : answers_(std::move(answers)) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(*socket); });
        });
    }
    std::string url() const { return "rtsp://127.0.0.1:" + std::to_string(serverPort()) + "/x"; }
    QList<QByteArray> requests;

private:
    void answer(QTcpSocket& socket) {
        pending_ += socket.readAll();
        for (int end = pending_.indexOf("\r\n\r\n"); end >= 0; end = pending_.indexOf("\r\n\r\n")) {
            // Packets stand before a request.
            while (pending_.startsWith('$') && pending_.size() >= 4) {
                pending_.remove(0, 4 + static_cast<uchar>(pending_[2]) * 256 + static_cast<uchar>(pending_[3]));
            }
            end = pending_.indexOf("\r\n\r\n");
            if (end < 0)
                return;
            const QByteArray request = pending_.left(end);
            pending_.remove(0, end + 4);
            requests.append(request);
            if (answers_.isEmpty())
                continue;
            QByteArray text = answers_.takeFirst();
            const int at = request.indexOf("CSeq: ") + 6;
            text.replace("#", request.mid(at, request.indexOf("\r\n", at) - at));
            socket.write(text);
            if (text.isEmpty())
                socket.disconnectFromHost();
        }
    }
    QList<QByteArray> answers_;
    QByteArray pending_;
};

const QByteArray described = [] {
    const QByteArray sdp = "v=0\r\nm=audio 0 RTP/AVP 0\r\na=control:x\r\na=sendonly\r\n";
    return "RTSP/1.0 200 OK\r\nCSeq: #\r\nContent-Length: " + QByteArray::number(sdp.size()) + "\r\n\r\n" + sdp;
}();
const QByteArray good = "RTSP/1.0 200 OK\r\nCSeq: #\r\nSession: 7;timeout=2\r\n\r\n";

} // namespace

/// Talking to network cameras.
class tst_BackChannel : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void isHeard_data();
    void isHeard();
    void watchersAreTold();
    void oneAtATime();
    void refuses_data();
    void refuses();
    void staysOpenUntilTheCameraCloses();
    void stopsAtAnyMoment_data();
    void stopsAtAnyMoment();

private:
    HubOptions options();
    std::vector<std::int16_t> heard(const char* name) const;
    std::string lastLine();

    QTemporaryDir folder_;
    std::unique_ptr<RtspServer> server_;
    std::unique_ptr<RtspServer> locked_;
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

HubOptions tst_BackChannel::options() {
    HubOptions options;
    options.loopFolder = "unused";
    options.networkTimeout = ample;
    options.log = [this](const std::string& line) {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    };
    return options;
}

std::vector<std::int16_t> tst_BackChannel::heard(const char* name) const {
    QFile file(folder_.filePath(QString(name) + ".raw"));
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    std::vector<std::int16_t> samples(static_cast<std::size_t>(bytes.size()) / 2);
    if (!samples.empty()) {
        std::memcpy(samples.data(), bytes.constData(), samples.size() * 2);
    }
    return samples;
}

std::string tst_BackChannel::lastLine() {
    const std::lock_guard lock(mutex_);
    return lines_.empty() ? std::string() : lines_.back();
}

void tst_BackChannel::initTestCase() {
    server_ = std::make_unique<RtspServer>(QStringList{"--ears", folder_.path()});
    QVERIFY(server_->start());
}

void tst_BackChannel::isHeard_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("rate");
    QTest::addColumn<QString>("auth");
    QTest::addColumn<bool>("relayed");
    QTest::newRow("mu-law") << QByteArray("hears-pcmu") << 8000 << "" << false;
    QTest::newRow("A-law, digest") << QByteArray("hears-pcma") << 8000 << "digest" << false;
    QTest::newRow("16 kHz, basic, through the client's transport")
        << QByteArray("hears-wide") << 16000 << "basic" << true;
}

void tst_BackChannel::isHeard() {
    QFETCH(QByteArray, name);
    QFETCH(int, rate);
    QFETCH(QString, auth);
    QFETCH(bool, relayed);
    QStringList arguments{"--ears", folder_.path()};
    if (!auth.isEmpty()) {
        arguments << "--auth" << auth << "--user"
                  << "viewer"
                  << "--password"
                  << "p@s:s";
    }
    RtspServer server(arguments);
    QVERIFY(server.start());
    DirectDelegate delegate;
    HubOptions hubOptions = options();
    if (relayed) {
        hubOptions.socketDelegate = [&] {
            return &delegate;
        };
    }
    {
        StreamHub hub(hubOptions);
        const auto talk = std::make_shared<Talk>(8000, 1);
        const auto mouth = std::make_shared<RecordingListener>();
        hub.subscribe(talking(server.url('/' + name, auth.isEmpty() ? "" : "viewer:p%40s%3As@"), talk), mouth);
        QVERIFY(isOpen(*mouth));
        const StreamParameters parameters = mouth->record().opened[0];
        QVERIFY(parameters.talk && !parameters.sound);
        QCOMPARE(parameters.connectionType, std::string(relayed ? "RTSP/PROXY" : "RTSP/TCP"));
        const Speaker speaker(talk);
        QElapsedTimer time;
        time.start();
        const auto second = static_cast<std::size_t>(rate);
        QTRY_VERIFY_WITH_TIMEOUT(mouth->record().closed || heard(name).size() >= 2 * second, 120000);
        QVERIFY2(!mouth->record().closed, lastLine().c_str());
        // No faster than it is said, but for what a camera may keep for its own clock.
        QVERIFY(time.elapsed() > 1500);
        const auto samples = heard(name);
        QVERIFY(shareOf(440, std::span(samples).last(second), rate) > 0.9);
    }
    QCOMPARE(delegate.closes.load(), relayed ? 1 : 0);
    QCOMPARE(delegate.callsAfterClose.load(), 0);
}

void tst_BackChannel::watchersAreTold() {
    const std::string url = server_->url("/hears-pcmu");
    const auto eye = std::make_shared<RecordingListener>();
    // Looked up by the call that follows on the news, before that call is noted itself.
    constexpr std::size_t unknown = SIZE_MAX;
    std::atomic<std::size_t> told{unknown};
    eye->onAnything = [&told, listener = eye.get()] {
        const auto record = listener->record();
        if (told == unknown && !record.opened.empty() && record.opened.back().talk) {
            told = record.coded.size();
        }
    };
    StreamHub hub(options());
    hub.subscribe(watching(url), eye);
    QVERIFY(eye->waitFor([](const auto& record) { return !record.opened.empty() && record.opened.back().talk; }));
    QVERIFY(eye->waitFor([&](const auto& record) { return told != unknown && record.coded.size() > told; }));
    const auto record = eye->record();
    QVERIFY(record.opened.size() <= 2);
    QVERIFY(record.coded[told].keyFrame);
    // It is known now, and told at once; also of the other stream, whose address does not have it.
    const auto other = std::make_shared<RecordingListener>();
    hub.subscribe(watching(server_->url("/live"), Quality::Main), other);
    QVERIFY(isOpen(*other));
    QVERIFY(other->record().opened[0].talk);
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(talking(server_->url("/live"), std::make_shared<Talk>(8000, 1)), mouth);
    QVERIFY(isOpen(*mouth));
}

void tst_BackChannel::oneAtATime() {
    StreamHub hub(options());
    const std::string url = server_->url("/hears-pcma");
    const auto first = std::make_shared<RecordingListener>();
    const auto firstId = hub.subscribe(talking(url, std::make_shared<Talk>(8000, 1)), first);
    QVERIFY(isOpen(*first));
    const auto second = std::make_shared<RecordingListener>();
    hub.subscribe(talking(url, std::make_shared<Talk>(8000, 1)), second);
    QCOMPARE(second->waitForClose(), std::optional(StreamError::TalkBusy));
    QVERIFY(!first->record().closed);
    hub.unsubscribe(firstId);
    const auto third = std::make_shared<RecordingListener>();
    hub.subscribe(talking(url, std::make_shared<Talk>(8000, 1)), third);
    QVERIFY(isOpen(*third));
}

void tst_BackChannel::refuses_data() {
    QTest::addColumn<QList<QByteArray>>("answers");
    QTest::addColumn<int>("reason");
    const auto row = [](const char* name, QList<QByteArray> answers, StreamError reason) {
        QTest::newRow(name) << std::move(answers) << static_cast<int>(reason);
    };
    const auto status = [](const char* code) {
        return QByteArray("RTSP/1.0 ") + code + "\r\nCSeq: #\r\n\r\n";
    };
    row("does not know of it", {status("551 Option not supported")}, StreamError::NoTalk);
    row("describes none", {good}, StreamError::NoTalk);
    row("no such path", {status("404 Not Found")}, StreamError::StreamNotFound);
    row("wants a password", {status("401 Unauthorized")}, StreamError::PasswordRefused);
    row("is busy", {described, status("453 Not Enough Bandwidth")}, StreamError::TalkBusy);
    row("does not play", {described, good, status("500 Internal Error")}, StreamError::NoTalk);
    row("no session", {described, status("200 OK")}, StreamError::NoTalk);
    row("no sequence", {"RTSP/1.0 200 OK\r\n\r\n"}, StreamError::NoTalk);
    row("garbage", {"\x01\x02garbage"}, StreamError::NoTalk);
    row("endless headers", {"RTSP/1.0 200 OK\r\nX: " + QByteArray(100000, 'x')}, StreamError::NoTalk);
    row("endless body", {"RTSP/1.0 200 OK\r\nCSeq: #\r\nContent-Length: 999999999\r\n\r\n"}, StreamError::NoTalk);
    row("hangs up", {QByteArray()}, StreamError::ConnectionLost);
}

void tst_BackChannel::refuses() {
    QFETCH(QList<QByteArray>, answers);
    QFETCH(int, reason);
    ScriptedCamera camera(answers);
    {
        const std::lock_guard lock(mutex_);
        lines_.clear();
    }
    StreamHub hub(options());
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(talking(camera.url(), std::make_shared<Talk>(8000, 1)), mouth);
    QTRY_VERIFY_WITH_TIMEOUT(mouth->record().closed, 120000);
    QCOMPARE(static_cast<int>(*mouth->record().closed), reason);
    QVERIFY(mouth->record().opened.empty());
    hub.stop();
    QCOMPARE(lines_.size(), std::size_t{1});
}

void tst_BackChannel::staysOpenUntilTheCameraCloses() {
    const QByteArray refused = "RTSP/1.0 501 Not Implemented\r\nCSeq: #\r\n\r\n";
    const QByteArray media("$\0\0\4abcd", 8);
    ScriptedCamera camera({described, good, good, media + refused, good, media + good, QByteArray()});
    StreamHub hub(options());
    const auto talk = std::make_shared<Talk>(8000, 1);
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(talking(camera.url(), talk), mouth);
    QTRY_VERIFY_WITH_TIMEOUT(!mouth->record().opened.empty(), 120000);
    const Speaker speaker(talk);
    QTRY_VERIFY_WITH_TIMEOUT(mouth->record().closed, 120000);
    QCOMPARE(*mouth->record().closed, StreamError::ConnectionLost);
    QByteArrayList methods;
    for (const QByteArray& request : camera.requests) {
        methods.append(request.left(request.indexOf(' ')));
        QCOMPARE(request.contains("Session: 7"), methods.size() > 2);
        QCOMPARE(request.contains("Require: www.onvif.org/ver20/backchannel"), methods.size() <= 3);
    }
    QCOMPARE(methods.join(' '), QByteArray("DESCRIBE SETUP PLAY GET_PARAMETER OPTIONS OPTIONS OPTIONS"));
}

void tst_BackChannel::stopsAtAnyMoment_data() {
    QTest::addColumn<int>("answered");
    QTest::newRow("nothing is answered") << 0;
    QTest::newRow("described") << 1;
    QTest::newRow("set up") << 2;
    QTest::newRow("talked to") << 3;
}

void tst_BackChannel::stopsAtAnyMoment() {
    QFETCH(int, answered);
    ScriptedCamera camera(QList<QByteArray>{described, good, good}.mid(0, answered));
    StreamHub hub(options());
    const auto talk = std::make_shared<Talk>(8000, 1);
    const auto mouth = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(talking(camera.url(), talk), mouth);
    const Speaker speaker(talk);
    QTRY_VERIFY_WITH_TIMEOUT(answered < 3 ? camera.requests.size() > answered : !mouth->record().opened.empty(),
                             120000);
    hub.unsubscribe(id);
    QVERIFY(!mouth->record().closed);
    hub.stop();
    // Where a session was opened, it is taken leave of, though the camera does not answer.
    QTRY_COMPARE_WITH_TIMEOUT(camera.requests.last().startsWith("TEARDOWN"), answered >= 2, 60000);
}

QTEST_GUILESS_MAIN(tst_BackChannel)
#include "tst_BackChannel.moc"
