#include "storage/avi/AviRepair.h"
#include "storage/avi/AviWriter.h"
#include "support/CodedVideo.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using corvanta::avi::repairAvi;
using corvanta::avi::RepairResult;

namespace {

AviWriter::Bytes bytesOf(const QByteArray& array) {
    return {reinterpret_cast<const std::byte*>(array.constData()), static_cast<std::size_t>(array.size())};
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

const CodedVideo& video() {
    static const CodedVideo value = CodedVideo::make(60, 20);
    return value;
}

/// Writes the frames to a file; without its end when not `closed`.
std::unique_ptr<AviWriter> record(const QString& path, std::size_t frames) {
    auto writer = AviWriter::openOutput(path.toStdString());
    writer->setVideo(320, 180, 25, "H264");
    for (std::size_t i = 0; i < frames; ++i)
        writer->writeFrame(bytesOf(video().frames[i]), video().isKey(i));
    return writer;
}

} // namespace

class tst_AviRepair final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void killedWhileRecording();
    void cutAnywhere_data();
    void cutAnywhere();
    void placeholderAlone();
    void headerMissing();
    void indexWithoutHeader();
    void leftAlone_data();
    void leftAlone();
    void inUse();
    void missing();
    void absurdLengths();

private:
    std::filesystem::path path() const { return file_.toStdString(); }
    QByteArray whole(std::size_t frames) const;
    std::unique_ptr<QTemporaryDir> dir_;
    QString file_;
};

void tst_AviRepair::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    file_ = dir_->filePath(QStringLiteral("a.avi"));
    QCOMPARE(video().frames.size(), std::size_t(60));
}

/// What a file of so many frames looks like that was closed.
QByteArray tst_AviRepair::whole(std::size_t frames) const {
    const QString path = dir_->filePath(QStringLiteral("whole.avi"));
    QFile::remove(path);
    record(path, frames)->close();
    return readAll(path);
}

void tst_AviRepair::killedWhileRecording() {
    int told[2];
    QCOMPARE(pipe(told), 0);
    const pid_t child = fork();
    if (child == 0) {
        const auto writer = record(file_, 45);
        if (::write(told[1], "x", 1) == 1)
            pause();
        _exit(1);
    }
    char byte = 0;
    QVERIFY(::read(told[0], &byte, 1) == 1);
    QCOMPARE(repairAvi(path()), RepairResult::InUse);
    ::kill(child, SIGKILL);
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(repairAvi(path()), RepairResult::Repaired);
    QCOMPARE(readAll(file_), whole(45)); // every frame that was handed over, and nothing else
    QCOMPARE(repairAvi(path()), RepairResult::Complete);
    const ProbedVideo probed = ProbedVideo::of(file_);
    QCOMPARE(probed.problems, QString());
    QCOMPARE(probed.frames, 45);
    QCOMPARE(probed.keyFrames, 3);
}

void tst_AviRepair::cutAnywhere_data() {
    QTest::addColumn<int>("bytesAfter"); ///< the third frame
    QTest::newRow("between frames") << 0;
    QTest::newRow("one byte of the next") << 1;
    QTest::newRow("a part of its length") << 6;
    QTest::newRow("no data yet") << 8;
    QTest::newRow("a part of its data") << 30;
}

void tst_AviRepair::cutAnywhere() {
    QFETCH(int, bytesAfter);
    {
        const auto writer = record(file_, 3);
        const int end = static_cast<int>(writer->writePosition());
        const QByteArray before = readAll(file_);
        writer->writeFrame(bytesOf(video().frames[3]), false);
        const QByteArray after = readAll(file_);
        QCOMPARE(before.size(), end);
        writeAll(dir_->filePath(QStringLiteral("cut.avi")), after.left(end + bytesAfter));
    }
    const QString cut = dir_->filePath(QStringLiteral("cut.avi"));
    QCOMPARE(repairAvi(cut.toStdString()), RepairResult::Repaired);
    QCOMPARE(readAll(cut), whole(3));
}

void tst_AviRepair::placeholderAlone() {
    for (const int size : {0, 100, 2048, 2050}) {
        const QByteArray bytes(size, '\0');
        writeAll(file_, bytes);
        QCOMPARE(repairAvi(path()), RepairResult::Empty);
        QCOMPARE(readAll(file_), bytes);
    }
}

// The header had not reached the disk: size and rate are unknown, the frames are there.
void tst_AviRepair::headerMissing() {
    record(file_, 30)->close();
    QByteArray bytes =
        readAll(file_).left(static_cast<int>(record(dir_->filePath(QStringLiteral("b")), 30)->writePosition()));
    bytes.replace(0, 2048, QByteArray(2048, '\0'));
    writeAll(file_, bytes);
    QCOMPARE(repairAvi(path()), RepairResult::Repaired);
    const ProbedVideo probed = ProbedVideo::of(file_);
    QCOMPARE(probed.frames, 30);
    QCOMPARE(probed.keyFrames, 2);
    QCOMPARE(probed.size, QStringLiteral("320x180")); // from the frames themselves
    QCOMPARE(readAll(file_).mid(2048, bytes.size() - 2048), bytes.mid(2048));
}

// The end came between the index and the header.
void tst_AviRepair::indexWithoutHeader() {
    const QByteArray complete = whole(10);
    const QString open = dir_->filePath(QStringLiteral("open.avi"));
    QByteArray header;
    {
        const auto writer = record(open, 0);
        header = readAll(open);
    }
    QByteArray bytes = complete;
    bytes.replace(0, 2048, header.left(2048));
    writeAll(file_, bytes);
    QCOMPARE(repairAvi(path()), RepairResult::Repaired);
    QCOMPARE(readAll(file_), complete);
}

void tst_AviRepair::leftAlone_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("result");
    QTest::newRow("whole") << whole(4) << static_cast<int>(RepairResult::Complete);
    QTest::newRow("text") << QByteArray(5000, 'x') << static_cast<int>(RepairResult::Foreign);
    QTest::newRow("short text") << QByteArray("RIFF") << static_cast<int>(RepairResult::Foreign);
    QByteArray other = whole(4);
    other.replace(212, 4, "JUNK");
    QTest::newRow("laid out by others") << other << static_cast<int>(RepairResult::Foreign);
    QTest::newRow("zeros with something else behind")
        << QByteArray(2048, '\0') + QByteArray("ftypisom00000000") << static_cast<int>(RepairResult::Empty);
}

void tst_AviRepair::leftAlone() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, result);
    writeAll(file_, bytes);
    QCOMPARE(static_cast<int>(repairAvi(path())), result);
    QCOMPARE(readAll(file_), bytes);
}

void tst_AviRepair::inUse() {
    const auto writer = record(file_, 5);
    const QByteArray bytes = readAll(file_);
    QCOMPARE(repairAvi(path()), RepairResult::InUse);
    QCOMPARE(readAll(file_), bytes);
}

void tst_AviRepair::missing() {
    QCOMPARE(repairAvi(path()), RepairResult::Failed);
}

void tst_AviRepair::absurdLengths() {
    QByteArray bytes;
    {
        const auto writer = record(file_, 2);
        bytes = readAll(file_);
    }
    writeAll(file_, bytes + QByteArray("00db\xff\xff\xff\xff", 8) + QByteArray(500, 'x'));
    QCOMPARE(repairAvi(path()), RepairResult::Repaired);
    QCOMPARE(readAll(file_), whole(2));
}

QTEST_GUILESS_MAIN(tst_AviRepair)
#include "tst_AviRepair.moc"
