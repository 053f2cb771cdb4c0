#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "recording/CodedMessage.h"
#include "recording/Recorder.h"
#include "storage/RecordingStorage.h"
#include "support/CodedVideo.h"
#include "support/FakeSdk.h"

#include <QDir>
#include <QDirIterator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

#include <mutex>
#include <thread>

namespace keys = corvanta::keys;
namespace recording = corvanta::recording;
using State = Recorder::State;

namespace {

const CodedVideo& video() {
    static const CodedVideo value = CodedVideo::make(120, 25, 25, 64, 48);
    return value;
}

/// Disks whose space the test decides, also while a deletion asks for it in its own thread.
class FakeDisks final : public DiskProbe {
public:
    QStringList drives() const override { return drives_; }
    QString systemDrive() const override { return {}; }
    std::optional<std::uint64_t> freeBytes(const QString& drive) const override {
        const std::lock_guard lock(mutex_);
        return full_.contains(drive) ? 0 : std::uint64_t(1) << 40U;
    }
    QDate today() const override { return QDate(2024, 3, 5); }
    void setFull(const QStringList& full) {
        const std::lock_guard lock(mutex_);
        full_ = full;
    }

    QStringList drives_;

private:
    mutable std::mutex mutex_;
    QStringList full_;
};

} // namespace

class tst_Recorder final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void requestAsItStands();
    void wholeLife();
    void framesBeforeTheStop();
    void stoppedAndBegunAgain();
    void packedAtKeyFrames();
    void packingTime_data();
    void packingTime();
    void connectionLost();
    void endedByTheDevice();
    void neverOpened();
    void otherDriveTakesOver();
    void noRoomAnywhere();
    void folderCannotBeMade();
    void namesAreNeverTakenTwice();
    void reportsOutOfOrder();
    void messages_data();
    void messages();
    void restoredAfterTheEnd();
    void manyAtOnce();
    void requestRefused();

private:
    void make();
    int start(const QString& device);
    void report(int id, const QByteArray& rest);
    void opened(int id, int rate = 25);
    void frame(int id, std::size_t index);
    void frames(int id, std::size_t from, std::size_t to);
    QStringList files(const QString& drive = {}) const;
    QString drive(int number) const { return dir_->filePath(QStringLiteral("d%1/").arg(number)); }

    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<Settings> settings_;
    FakeDisks* disks_ = nullptr;
    std::unique_ptr<RecordingStorage> storage_;
    std::unique_ptr<SdkGateway> gateway_;
    std::unique_ptr<Recorder> recorder_;
    QDateTime now_;
    QHash<QString, QString> names_; ///< what the user calls devices
    QStringList said_;
};

void tst_Recorder::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    now_ = QDateTime(QDate(2024, 3, 5), QTime(10, 0));
    said_.clear();
    names_ = {{QStringLiteral("named"), QStringLiteral("东门 %2")}};
    queue_ = std::make_unique<TaskQueue>();
    settings_ = std::make_unique<Settings>(dir_->filePath(QStringLiteral("set.json")));
    settings_->load();
    auto disks = std::make_unique<FakeDisks>();
    disks_ = disks.get();
    for (const int number : {1, 2}) {
        QVERIFY(QDir().mkpath(drive(number)));
        disks->drives_ += drive(number);
    }
    storage_ = std::make_unique<RecordingStorage>(*settings_, *queue_, std::move(disks));
    storage_->prepareDrives();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
    make();
}

void tst_Recorder::make() {
    recorder_.reset();
    recorder_ = std::make_unique<Recorder>(Recorder::Parts{*gateway_, *storage_, *settings_,
                                                           [this](const QString& id) {
                                                               return names_.value(id);
                                                           }},
                                           nullptr, [this] { return now_; });
    connect(recorder_.get(), &Recorder::sigReport, recorder_.get(),
            [this](const QString& operation, const QVariant& value) {
                QCOMPARE(operation, QStringLiteral("开始录像"));
                recorder_->onReport(value.toMap());
            });
    connect(recorder_.get(), &Recorder::sigFrame, recorder_.get(), &Recorder::onFrame);
    connect(recorder_.get(), &Recorder::sigMessage, recorder_.get(), [this](const QString& text) { said_ += text; });
}

void tst_Recorder::cleanup() {
    recorder_.reset();
    gateway_.reset();
    storage_.reset();
    queue_.reset();
    sdk_.reset();
}

int tst_Recorder::start(const QString& device) {
    recorder_->start(device);
    return sdk_.requests().back().id;
}

void tst_Recorder::report(int id, const QByteArray& rest) {
    sdk_.respond(id, "{\"reqid\":" + std::to_string(id) + "," + rest.toStdString() + "}");
    queue_->drain();
}

void tst_Recorder::opened(int id, int rate) {
    report(id, R"("type":"avopen","retcode":0,"avparam":{"framerate":)" + QByteArray::number(rate) +
                   R"(,"weidth":64,"height":48})");
}

void tst_Recorder::frame(int id, std::size_t index) {
    const QByteArray& data = video().frames[index];
    sdk_.respond(id, R"({"type":"videodata","data":)" +
                         std::to_string(reinterpret_cast<std::intptr_t>(data.constData())) + R"(,"len":)" +
                         std::to_string(data.size()) + "}");
}

void tst_Recorder::frames(int id, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i)
        frame(id, i);
    queue_->drain();
}

/// Every recording, by name, on one drive or all.
QStringList tst_Recorder::files(const QString& drive) const {
    QStringList result;
    QDirIterator it(drive.isEmpty() ? dir_->path() : drive, {QStringLiteral("*.avi")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        result += it.next();
    result.sort();
    return result;
}

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
    QVERIFY(!recorder_->since(QStringLiteral("c")));
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    QCOMPARE(recorder_->since(QStringLiteral("c")).value(), now_);
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

void tst_Recorder::connectionLost() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    report(id, R"("type":"avstate","state":1)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    const QString first = files().first();
    QCOMPARE(ProbedVideo::of(first).frames, 30); // complete, while the connection is being made
    const QDateTime since = recorder_->since(QStringLiteral("c")).value();
    now_ = now_.addSecs(20);
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    QCOMPARE(recorder_->since(QStringLiteral("c")).value(), since);
    frames(id, 25, 45);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files().size(), 2);
    QCOMPARE(ProbedVideo::of(files().last()).frames, 20);
}

void tst_Recorder::endedByTheDevice() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    report(id, R"("type":"avclose","retcode":15)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    QCOMPARE(ProbedVideo::of(files().first()).frames, 30);
    now_ = now_.addMSecs(Recorder::RetryTime + 1);
    QTRY_COMPARE_WITH_TIMEOUT(sdk_.requests().size(), std::size_t(2), 60000);
    const int again = sdk_.requests().back().id;
    opened(again);
    frames(again, 0, 10);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files().size(), 2);
}

void tst_Recorder::neverOpened() {
    const int id = start(QStringLiteral("c"));
    for (int i = 0; i < 2; ++i)
        QTest::ignoreMessage(QtWarningMsg, "Recoderclose not contains AviRecoder");
    report(id, R"("type":"avclose","retcode":12)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Off);
    report(start(QStringLiteral("named")), R"("type":"avclose","retcode":12)");
    QCOMPARE(said_, QStringList({QStringLiteral("c 录像失败(12)"), QStringLiteral("东门 %2 录像失败(12)")}));
    QVERIFY(settings_->get(keys::Recordings).toStringList().isEmpty());
    QVERIFY(files().isEmpty());
}

void tst_Recorder::otherDriveTakesOver() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    disks_->setFull({drive(1)});
    frames(id, 30, 50); // no key frame: goes on where it is
    QCOMPARE(files(drive(2)).size(), 0);
    frames(id, 50, 60);
    QCOMPARE(files(drive(2)).size(), 1);
    disks_->setFull({});
    frames(id, 60, 80); // back at the key frame 75
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files(drive(1)).size(), 2);
    int sum = 0;
    for (const QString& file : files()) {
        const ProbedVideo probed = ProbedVideo::of(file);
        QCOMPARE(probed.problems, QString());
        sum += probed.frames;
    }
    QCOMPARE(sum, 80);
    QCOMPARE(ProbedVideo::of(files(drive(2)).first()).frames, 25);
}

void tst_Recorder::noRoomAnywhere() {
    disks_->setFull({drive(1), drive(2)});
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    QCOMPARE(said_, QStringList{QStringLiteral("c 录像暂停：没有可用的存储空间")});
    frames(id, 0, 30);
    QVERIFY(files().isEmpty());
    // There is room again: from the next key frame on.
    disks_->setFull({});
    now_ = now_.addMSecs(Recorder::RetryTime + 1);
    QTRY_COMPARE_WITH_TIMEOUT(recorder_->state(QStringLiteral("c")), State::Recording, 60000);
    frames(id, 30, 60);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(ProbedVideo::of(files().first()).frames, 10);
}

void tst_Recorder::folderCannotBeMade() {
    QFile inTheWay(drive(1) + QStringLiteral("ZEL"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(said_.size(), 1);
    QVERIFY(said_.first().startsWith(QStringLiteral("c 录像文件无法创建：")));
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording); // at once, so that nothing is lost
    QVERIFY(recorder_->file(QStringLiteral("c")).startsWith(drive(2)));
}

void tst_Recorder::namesAreNeverTakenTwice() {
    const QString folder = drive(1) + QStringLiteral("ZEL/c/LocalRecord/2024-03-05/");
    QVERIFY(QDir().mkpath(folder));
    for (const char* const name : {"20240305100000.avi", "20240305100001.avi"}) {
        QFile file(folder + QLatin1String(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
    }
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(recorder_->file(QStringLiteral("c")), folder + QStringLiteral("20240305100002.avi"));
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

void tst_Recorder::requestRefused() {
    sdk_.nextId = 0;
    recorder_->start(QStringLiteral("c"));
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    sdk_.nextId = 9;
    now_ = now_.addMSecs(Recorder::RetryTime + 1);
    QTRY_COMPARE_WITH_TIMEOUT(sdk_.requests().size(), std::size_t(1), 60000); // one that was not taken is none
    opened(9);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
}

QTEST_GUILESS_MAIN(tst_Recorder)
#include "tst_Recorder.moc"
