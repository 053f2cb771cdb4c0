#include "recording/CodedMessage.h"
#include "recording/RecorderTest.h"
#include "support/CodedVideo.h"

#include <QSignalSpy>
#include <QtTest>

#include <thread>

namespace keys = corvanta::keys;
namespace recording = corvanta::recording;
using State = Recorder::State;

/// Recordings as they begin, are cut and end.
class tst_Recorder final : public RecorderTest {
    Q_OBJECT
private slots:
    void requestAsItStands();
    void wholeLife();
    void framesBeforeTheStop();
    void stoppedAndBegunAgain();
    void packedAtKeyFrames();
    void packingTime_data();
    void packingTime();
    void reportsOutOfOrder();
    void messages_data();
    void messages();
    void restoredAfterTheEnd();
    void manyAtOnce();
};

void tst_Recorder::requestAsItStands() {
    start(QStringLiteral("cam 1"));
    QCOMPARE(QByteArray::fromStdString(sdk_.requests().back().json),
             QByteArray(R"({"avreq":{"hd":true,"ipncid":"cam 1","recvavdata":true,"reqtype":"avreq"}})"));
    recorder_->start(QStringLiteral("cam 1"));
    recorder_->start(QString());
    QCOMPARE(sdk_.requests().size(), std::size_t(1));
}

void tst_Recorder::wholeLife() {
    QSignalSpy changes(recorder_.get(), &Recorder::sigChanged);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Off);
    const int id = start(QStringLiteral("c"));
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    QVERIFY(!recorder_->lasting(QStringLiteral("c")));
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    waited_ = std::chrono::milliseconds(2500);
    QCOMPARE(recorder_->lasting(QStringLiteral("c")), std::make_optional(std::chrono::seconds(2)));
    const QString file = drive(1) + QStringLiteral("ZEL/c/LocalRecord/2024-03-05/20240305100000.avi");
    QCOMPARE(recorder_->file(QStringLiteral("c")), file);
    frames(id, 0, 60);
    recorder_->stop(QStringLiteral("c"));
    QCOMPARE(sdk_.stopped(), std::vector<int>{id});
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Off);
    queue_->drain();
    QCOMPARE(recorder_->file(QStringLiteral("c")), QString());
    QVERIFY(changes.size() >= 3);
    QCOMPARE(files(), QStringList{file});
    const ProbedVideo probed = ProbedVideo::of(file);
    QCOMPARE(probed.problems, QString());
    QCOMPARE(probed.frames, 60);
    QCOMPARE(probed.keyFrames, 3);
    QCOMPARE(probed.size, QStringLiteral("64x48"));
    QCOMPARE(probed.frameRate, QStringLiteral("25/1"));
    QCOMPARE(said_, QStringList());
}

// What the SDK had delivered when the operator stopped is in the file, and when the program ended, too.
void tst_Recorder::framesBeforeTheStop() {
    for (const bool ends : {false, true}) {
        const int id = start(QStringLiteral("c"));
        opened(id);
        for (std::size_t i = 0; i < 40; ++i)
            frame(id, i); // still on their way
        const QString file = recorder_->file(QStringLiteral("c"));
        if (ends) {
            make();
        } else {
            recorder_->stop(QStringLiteral("c"));
            queue_->drain();
        }
        QCOMPARE(ProbedVideo::of(file).frames, 40);
    }
}

void tst_Recorder::stoppedAndBegunAgain() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 10);
    recorder_->stop(QStringLiteral("c"));
    recorder_->start(QStringLiteral("c")); // before the first one has come to its end
    queue_->drain();
    const int next = sdk_.requests().back().id;
    QVERIFY(next != id);
    opened(next);
    frames(next, 0, 20);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    const QStringList all = files();
    QCOMPARE(all.size(), 2);
    QCOMPARE(ProbedVideo::of(all[0]).frames, 10);
    QCOMPARE(ProbedVideo::of(all[1]).frames, 20);
}

// A minute of one frame a second, cut at the first key frame after it; each piece counts its own frames.
void tst_Recorder::packedAtKeyFrames() {
    settings_->set(keys::PackingTime, 1);
    const int id = start(QStringLiteral("c"));
    opened(id, 1);
    frames(id, 0, 75);
    QCOMPARE(files().size(), 1); // 75 is not written yet
    frames(id, 75, 120);
    QCOMPARE(files().size(), 2);
    for (std::size_t i = 0; i < 50; ++i)
        frame(id, i);
    queue_->drain();
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    const QStringList all = files();
    QCOMPARE(all.size(), 3);
    // The first cut at the key frame 75 (60 is over at 75), the next one at the key frame after 60 more.
    QCOMPARE(ProbedVideo::of(all[0]).frames, 75);
    QCOMPARE(ProbedVideo::of(all[1]).frames, 70);
    QCOMPARE(ProbedVideo::of(all[2]).frames, 25);
}

void tst_Recorder::packingTime_data() {
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("packing");
    QTest::addColumn<int>("pieces"); ///< of 1 key frame each second, 120 frames
    QTest::newRow("not reached") << 2 << 2 << 1;
    QTest::newRow("reached") << 1 << 1 << 2;
    QTest::newRow("no rate") << 0 << 1 << 1;
}

void tst_Recorder::packingTime() {
    QFETCH(int, rate);
    QFETCH(int, packing);
    QFETCH(int, pieces);
    settings_->set(keys::PackingTime, packing);
    const int id = start(QStringLiteral("c"));
    opened(id, rate);
    frames(id, 0, 120);
    QCOMPARE(files().size(), pieces);
}

void tst_Recorder::reportsOutOfOrder() {
    // Nobody asked for it: it is adopted.
    QTest::ignoreMessage(QtWarningMsg, "not save reqid");
    recorder_->onReport({{QStringLiteral("DeviceId"), QStringLiteral("x")},
                         {QStringLiteral("type"), QStringLiteral("avopen")},
                         {QStringLiteral("reqid"), 77},
                         {QStringLiteral("avparam"), QVariantMap{{QStringLiteral("framerate"), 25}}}});
    QCOMPARE(files().size(), 1);
    const int id = start(QStringLiteral("c"));
    opened(id);
    opened(id);
    QCOMPARE(files().size(), 2);
    frames(id, 0, 5);
    recorder_->onFrame(QStringLiteral("unknown"), new std::uint8_t[3], 3);
    recorder_->onFrame(QStringLiteral("c"), nullptr, 0);
    recorder_->onReport({});
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
}

void tst_Recorder::messages_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<int>("kind"); ///< index of what it is parsed to
    static const char data[] = "\0\0\0\1\x67";
    const QByteArray address = QByteArray::number(static_cast<qint64>(reinterpret_cast<std::intptr_t>(data)));
    QTest::newRow("frame") << QByteArray(R"({"type":"videodata","len":5,"data":)" + address + "}") << 0;
    QTest::newRow("no length") << QByteArray(R"({"type":"videodata","data":)" + address + "}") << 1;
    QTest::newRow("length 0") << QByteArray(R"({"type":"videodata","len":0,"data":)" + address + "}") << 1;
    QTest::newRow("below 0") << QByteArray(R"({"type":"videodata","len":-1,"data":)" + address + "}") << 1;
    QTest::newRow("absurd") << QByteArray(R"({"type":"videodata","len":4294967296,"data":)" + address + "}") << 1;
    QTest::newRow("fraction") << QByteArray(R"({"type":"videodata","len":1.5,"data":)" + address + "}") << 1;
    QTest::newRow("address 0") << QByteArray(R"({"type":"videodata","len":5,"data":0})") << 1;
    QTest::newRow("text as address") << QByteArray(R"({"type":"videodata","len":5,"data":"1"})") << 1;
    QTest::newRow("report") << QByteArray(R"({"type":"avstate","state":1})") << 2;
    QTest::newRow("no JSON") << QByteArray("{") << 2;
}

void tst_Recorder::messages() {
    QFETCH(QByteArray, message);
    QFETCH(int, kind);
    QCOMPARE(static_cast<int>(recording::parseCodedMessage(message.toStdString()).index()), kind);
    // And on its way through the recorder nothing of it does harm.
    const int id = start(QStringLiteral("c"));
    opened(id);
    sdk_.respond(id, message.toStdString());
    queue_->drain();
    frames(id, 0, 3);
}

void tst_Recorder::restoredAfterTheEnd() {
    opened(start(QStringLiteral("a")));
    opened(start(QStringLiteral("b")));
    opened(start(QStringLiteral("gone")));
    make();
    QCOMPARE(recorder_->wanted(), QStringList());
    recorder_->resume({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")});
    QCOMPARE(recorder_->wanted(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    // A sign-out ends them, and the next sign-in begins them again.
    recorder_->pause();
    queue_->drain();
    QCOMPARE(recorder_->state(QStringLiteral("a")), State::Off);
    recorder_->resume({QStringLiteral("b"), QStringLiteral("a")});
    QCOMPARE(recorder_->wanted(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    recorder_->keepOnly({QStringLiteral("b")});
    queue_->drain();
    QCOMPARE(recorder_->wanted(), QStringList{QStringLiteral("b")});
    QCOMPARE(settings_->get(keys::Recordings).toStringList(), QStringList{QStringLiteral("b")});
}

// Frames of many devices from threads of their own, while recordings begin and end.
void tst_Recorder::manyAtOnce() {
    constexpr int devices = 8;
    std::vector<int> ids;
    for (int i = 0; i < devices; ++i) {
        ids.push_back(start(QStringLiteral("c%1").arg(i)));
        opened(ids.back());
    }
    std::vector<std::thread> threads;
    std::atomic<int> running{devices};
    for (const int id : ids) {
        threads.emplace_back([this, id, &running] {
            for (std::size_t i = 0; i < 100; ++i)
                frame(id, i);
            --running;
        });
    }
    while (running > devices / 2)
        queue_->drain();
    recorder_->stop(QStringLiteral("c0"));
    while (running > 0)
        queue_->drain();
    for (std::thread& thread : threads)
        thread.join();
    make();
    for (int i = 1; i < devices; ++i) {
        const QStringList recorded = files(drive(1) + QStringLiteral("ZEL/c%1").arg(i));
        QCOMPARE(recorded.size(), 1);
        QCOMPARE(ProbedVideo::of(recorded.first()).frames, 100);
    }
}

QTEST_GUILESS_MAIN(tst_Recorder)
#include "tst_Recorder.moc"
