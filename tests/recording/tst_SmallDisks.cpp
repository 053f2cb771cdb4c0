#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "recording/Recorder.h"
#include "recording/SmallDrive.h"
#include "storage/RecordingStorage.h"
#include "storage/avi/AviRepair.h"
#include "support/CodedVideo.h"
#include "support/FakeSdk.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

namespace avi = corvanta::avi;
using State = Recorder::State;

namespace {

constexpr qint64 MiB = 1 << 20;
constexpr int DriveSize = 160; // MiB: 32 above the smallest threshold
constexpr int FrameSize = 1 << 19;
constexpr std::size_t KeyInterval = 10;
const QString Camera = QStringLiteral("c");

/// Real frames, made as long as those of a very good camera by filler units, which decoders pass over.
const CodedVideo& video() {
    static const CodedVideo value = [] {
        CodedVideo made = CodedVideo::make(100, KeyInterval, 25, 64, 48);
        for (QByteArray& frame : made.frames) {
            frame += QByteArray("\0\0\0\1\x0c", 5);
            frame += QByteArray(FrameSize - frame.size() - 1, '\xff') + '\x80';
        }
        return made;
    }();
    return value;
}

QByteArray hashOf(const QByteArray& data) {
    return QCryptographicHash::hash(data, QCryptographicHash::Md5).toHex();
}

/// What the frames of the video from one to before another are told by.
QList<QByteArray> frameHashes(std::size_t from, std::size_t to) {
    QList<QByteArray> result;
    for (std::size_t i = from; i < to; ++i)
        result += hashOf(video().frames[i % video().frames.size()]);
    return result;
}

/// The frames of files one after another, as ffprobe finds them; a file that it has anything to say about adds that.
QList<QByteArray> recordedHashes(const QStringList& files) {
    QList<QByteArray> result;
    for (const QString& file : files) {
        QProcess probe;
        probe.start(QStringLiteral("ffprobe"),
                    {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-show_data_hash"),
                     QStringLiteral("md5"), QStringLiteral("-show_entries"), QStringLiteral("packet=data_hash"),
                     QStringLiteral("-of"), QStringLiteral("csv=p=0"), file});
        probe.waitForFinished(120000);
        for (const QByteArray& line : probe.readAllStandardOutput().split('\n')) {
            if (!line.isEmpty())
                result += line.trimmed().mid(4); // behind "MD5:"
        }
        if (const QByteArray problems = probe.readAllStandardError(); !problems.isEmpty())
            result += problems;
    }
    return result;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Recordings on disks that are really full, really gone or really read-only; only the camera is made up.
class tst_SmallDisks final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void nextDriveAtTheThreshold();
    void oldestDayMakesRoom();
    void fullBehindTheThresholdsBack_data();
    void fullBehindTheThresholdsBack();
    void driveVanishes();
    void driveBecomesReadOnly();

private:
    QString folder(int number) const { return dir_->filePath(QStringLiteral("d%1/").arg(number)); }
    SmallDrive& drive(int number) { return *drives_[static_cast<std::size_t>(number) - 1]; }
    void opened();
    void report(const QByteArray& rest);
    void sendFrame(std::size_t index);
    void sendFrames(std::size_t from, std::size_t to);
    bool wasSaid(const QString& beginning) const;
    QStringList files(int number) const;

    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<QTemporaryDir> dir_;
    std::vector<std::unique_ptr<SmallDrive>> drives_;
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<Settings> settings_;
    std::unique_ptr<RecordingStorage> storage_;
    std::unique_ptr<SdkGateway> gateway_;
    std::unique_ptr<Recorder> recorder_;
    std::chrono::seconds waited_{0}; ///< by which the recorder's waiting goes before the real clock
    QStringList said_;
};

void tst_SmallDisks::initTestCase() {
    if (!smallDrives::refusal().isEmpty())
        QSKIP(qPrintable(smallDrives::refusal()));
    QCOMPARE(video().frames.size(), std::size_t(100));
}

void tst_SmallDisks::init() {
    sdk_.reset();
    said_.clear();
    waited_ = {};
    dir_ = std::make_unique<QTemporaryDir>();
    for (const int number : {1, 2}) {
        QVERIFY(QDir().mkpath(folder(number)));
        drives_.push_back(std::make_unique<SmallDrive>(folder(number), DriveSize));
        QVERIFY(drives_.back()->isMounted());
    }
    queue_ = std::make_unique<TaskQueue>();
    settings_ = std::make_unique<Settings>(dir_->filePath(QStringLiteral("set.json")));
    settings_->load();
    storage_ = std::make_unique<RecordingStorage>(*settings_, *queue_,
                                                  std::make_unique<SystemDisks>(QStringList{folder(1), folder(2)}));
    storage_->prepareDrives();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
    recorder_ = std::make_unique<Recorder>(Recorder::Parts{*gateway_, *storage_, *settings_, {}}, nullptr,
                                           &QDateTime::currentDateTime,
                                           [this] { return std::chrono::steady_clock::now() + waited_; });
    connect(recorder_.get(), &Recorder::sigReport, recorder_.get(),
            [this](const QString&, const QVariant& value) { recorder_->onReport(value.toMap()); });
    connect(recorder_.get(), &Recorder::sigFrame, recorder_.get(), &Recorder::onFrame);
    connect(recorder_.get(), &Recorder::sigMessage, recorder_.get(), [this](const QString& text) { said_ += text; });
}

void tst_SmallDisks::cleanup() {
    recorder_.reset();
    gateway_.reset();
    storage_.reset();
    queue_.reset();
    sdk_.reset();
    drives_.clear();
    dir_.reset();
}

void tst_SmallDisks::report(const QByteArray& rest) {
    const int id = sdk_.requests().back().id;
    sdk_.respond(id, "{\"reqid\":" + std::to_string(id) + "," + rest.toStdString() + "}");
    queue_->drain();
}

void tst_SmallDisks::opened() {
    recorder_->start(Camera);
    report(R"("type":"avopen","retcode":0,"avparam":{"framerate":25,"weidth":64,"height":48})");
}

void tst_SmallDisks::sendFrame(std::size_t index) {
    const QByteArray& data = video().frames[index % video().frames.size()];
    sdk_.respond(sdk_.requests().back().id, R"({"type":"videodata","data":)" +
                                                std::to_string(reinterpret_cast<std::intptr_t>(data.constData())) +
                                                R"(,"len":)" + std::to_string(data.size()) + "}");
    queue_->drain();
    QCoreApplication::processEvents(); // a deletion may have come to its end
}

void tst_SmallDisks::sendFrames(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i)
        sendFrame(i);
}

bool tst_SmallDisks::wasSaid(const QString& beginning) const {
    return std::any_of(said_.begin(), said_.end(),
                       [&beginning](const QString& text) { return text.startsWith(beginning); });
}

/// The camera's recordings on a drive, in their order.
QStringList tst_SmallDisks::files(int number) const {
    QStringList result;
    QDirIterator it(folder(number) + QStringLiteral("ZEL/") + Camera, {QStringLiteral("*.avi")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        result += it.next();
    result.sort();
    return result;
}

void tst_SmallDisks::nextDriveAtTheThreshold() {
    opened();
    sendFrames(0, 100);
    recorder_->stop(Camera);
    queue_->drain();
    QCOMPARE(files(1).size(), 1);
    QCOMPARE(files(2).size(), 1);
    QVERIFY(storage_->disks().freeBytes(folder(1)).value() <= 128 * MiB);
    QVERIFY(storage_->disks().freeBytes(folder(2)).value() > 128 * MiB);
    const QStringList all = files(1) + files(2);
    QCOMPARE(recordedHashes(all), frameHashes(0, 100));
    for (const QString& file : all) {
        const ProbedVideo probed = ProbedVideo::of(file);
        QCOMPARE(probed.problems, QString());
        QVERIFY(probed.beginsWithKey);
        QCOMPARE(probed.keyFrames, probed.frames / int(KeyInterval));
    }
    QCOMPARE(said_, QStringList());
}

void tst_SmallDisks::oldestDayMakesRoom() {
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    const QString oldest = QStringLiteral("ZEL/old/LocalRecord/2020-01-01/");
    const QString next = QStringLiteral("ZEL/old/Capture/2020-01-02/");
    const QStringList kept{folder(1) + QStringLiteral("precious/2019-01-01/a.avi"),
                           folder(1) + QStringLiteral("ZEL/old/LocalRecord/2019-13-01/a.avi"),
                           folder(2) + QStringLiteral("ZEL/old/LocalRecord/") + today + QStringLiteral("/a.avi"),
                           dir_->filePath(QStringLiteral("outside/2018-01-01/a.avi"))};
    for (const QString& path : kept) {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
    }
    QVERIFY(QDir().mkpath(folder(2) + QStringLiteral("ZEL/old/Image")));
    QVERIFY(QFile::link(dir_->filePath(QStringLiteral("outside/2018-01-01")),
                        folder(2) + QStringLiteral("ZEL/old/Image/2018-01-01")));
    drive(1).fill(oldest + QStringLiteral("20200101000000.avi"), 25 * MiB);
    drive(1).fill(QStringLiteral("ballast"), 10 * MiB);
    drive(2).fill(next + QStringLiteral("20200102000000.jpg"), 25 * MiB);
    drive(2).fill(QStringLiteral("ballast"), 10 * MiB);

    opened();
    QCOMPARE(recorder_->state(Camera), State::Recording); // into what is kept free, meanwhile
    QTRY_VERIFY_WITH_TIMEOUT(!QDir(folder(1) + oldest).exists(), 60000);
    QVERIFY(QDir(folder(2) + next).exists()); // no more than was needed
    std::size_t sent = 0;
    for (; sent < 400 && !wasSaid(QStringLiteral("c 录像暂停")); ++sent)
        sendFrame(sent);
    QVERIFY(!QDir(folder(2) + next).exists());
    QCOMPARE(recorder_->state(Camera), State::Waiting);
    QCOMPARE(said_, QStringList{QStringLiteral("c 录像暂停：没有可用的存储空间")});
    for (const QString& path : kept)
        QCOMPARE(contentOf(path), QByteArray("precious"));
    // Up to the key frame at which nothing was left to delete: nothing lost, nothing twice.
    const QList<QByteArray> recorded = recordedHashes(files(1) + files(2));
    QCOMPARE(recorded, frameHashes(0, sent - 1));

    QVERIFY(QFile::remove(folder(2) + QStringLiteral("ballast")));
    QVERIFY(QFile::remove(files(2).last()));
    waited_ = Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(recorder_->state(Camera), State::Recording, 60000);
}

void tst_SmallDisks::fullBehindTheThresholdsBack_data() {
    QTest::addColumn<qint64>("left"); ///< bytes
    QTest::newRow("in the middle of a frame") << qint64(FrameSize / 2);
    QTest::newRow("no byte left") << qint64(0);
}

void tst_SmallDisks::fullBehindTheThresholdsBack() {
    QFETCH(qint64, left);
    opened();
    sendFrames(0, 12);
    report(R"("type":"avstate","state":1)");
    const QString complete = files(1).first();
    const QByteArray before = hashOf(contentOf(complete));
    opened();
    sendFrames(0, 13);
    const QString cut = recorder_->file(Camera);
    QVERIFY(cut != complete);
    const auto free = static_cast<qint64>(storage_->disks().freeBytes(folder(1)).value());
    QCOMPARE(drive(1).fill(QStringLiteral("ballast"), free - left), free - left);

    sendFrames(13, 40);
    QVERIFY(wasSaid(QStringLiteral("c 录像写入失败")));
    QCOMPARE(QFileInfo(recorder_->file(Camera)).path().startsWith(folder(2)), true);
    recorder_->stop(Camera);
    queue_->drain();
    QCOMPARE(hashOf(contentOf(complete)), before);
    // Where not even the index found room, the next start makes it.
    QVERIFY(QFile::remove(folder(1) + QStringLiteral("ballast")));
    const avi::RepairResult repaired = avi::repairAvi(cut.toStdString());
    QVERIFY(repaired == avi::RepairResult::Complete || repaired == avi::RepairResult::Repaired);
    QCOMPARE(wasSaid(QStringLiteral("c 录像文件未能完整保存")), repaired == avi::RepairResult::Repaired);
    QCOMPARE(recordedHashes({cut}), frameHashes(0, 13));
    QCOMPARE(recordedHashes(files(2)), frameHashes(20, 40));
}

void tst_SmallDisks::driveVanishes() {
    opened();
    sendFrames(0, 13);
    drive(1).vanish();
    sendFrames(13, 40);
    QCOMPARE(said_, QStringList{QStringLiteral("c 录像磁盘不可用：") + folder(1)});
    recorder_->stop(Camera);
    queue_->drain();
    QCOMPARE(recordedHashes(files(2)), frameHashes(20, 40));
    QCOMPARE(QDir(folder(1)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList()); // of another disk
}

void tst_SmallDisks::driveBecomesReadOnly() {
    opened();
    sendFrames(0, 20);
    report(R"("type":"avstate","state":1)");
    QVERIFY(drive(1).makeReadOnly());
    opened();
    sendFrames(20, 40);
    QCOMPARE(said_, QStringList{QStringLiteral("c 录像磁盘不可用：") + folder(1)});
    recorder_->stop(Camera);
    queue_->drain();
    QCOMPARE(recordedHashes(files(1) + files(2)), frameHashes(0, 40));
}

int main(int argc, char** argv) {
    smallDrives::enterOwnMounts();
    QCoreApplication application(argc, argv);
    tst_SmallDisks test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_SmallDisks.moc"
