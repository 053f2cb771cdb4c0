#include "storage/avi/AviWriter.h"
#include "support/CodedVideo.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace avi = corvanta::avi;
using Error = AviWriter::Error;

namespace {

AviWriter::Bytes bytesOf(const QByteArray& array) {
    return {reinterpret_cast<const std::byte*>(array.constData()), static_cast<std::size_t>(array.size())};
}

quint32 numberAt(const QByteArray& file, int position) {
    return qFromLittleEndian<quint32>(file.constData() + position);
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Lets the process write no file beyond a size, as a full disk does.
class SmallDisk final {
public:
    explicit SmallDisk(rlim_t size) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit before_{};
};

} // namespace

class tst_AviWriter final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void headerField_data();
    void headerField();
    void audioTracks();
    void tooManyTracksEndTheProcess();
    void judgedByFfprobe_data();
    void judgedByFfprobe();
    void oddFramesArePadded();
    void unknownRate();
    void sizeLimit();
    void cannotBeOpened();
    void closedTakesNothing();
    void oneWriterAFile();
    void fullDisk();
    void indexThatDoesNotFit();

private:
    std::filesystem::path path() const { return file_.toStdString(); }
    std::unique_ptr<QTemporaryDir> dir_;
    QString file_;
};

void tst_AviWriter::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    file_ = dir_->filePath(QStringLiteral("录像 1.avi"));
}

void tst_AviWriter::headerField_data() {
    QTest::addColumn<int>("position");
    QTest::addColumn<QByteArray>("value"); ///< as it stands in the file of three frames below
    const auto number = [](const char* name, int position, quint32 value) {
        QByteArray bytes(4, '\0');
        qToLittleEndian(value, bytes.data());
        QTest::newRow(name) << position << bytes;
    };
    const auto text = [](const char* name, int position, const char* value) {
        QTest::newRow(name) << position << QByteArray(value);
    };
    const quint32 moviEnd = 2048 + 16 + 12 + 14; // frames of 8, 3 and 5 bytes
    text("RIFF", 0, "RIFF");
    number("size of the file", 4, moviEnd + 8 + 3 * 16 - 8);
    text("AVI", 8, "AVI LIST");
    number("size of hdrl", 16, 192);
    text("hdrl", 20, "hdrlavih");
    number("size of avih", 28, 56);
    number("microseconds a frame", 32, 33367);
    number("no rate of bytes", 36, 0);
    number("granularity", 40, 0);
    number("flags", 44, 0x110);
    number("frames", 48, 3);
    number("streams", 56, 1);
    number("width", 64, 854);
    number("height", 68, 480);
    text("strl", 88, "LIST");
    number("size of strl", 92, 116);
    text("strh", 96, "strlstrh");
    text("vids", 108, "vidsH264");
    number("scale", 128, 1000000);
    number("rate", 132, 29970030);
    number("length", 140, 3);
    number("quality", 148, 0xFFFFFFFF);
    text("strf", 164, "strf");
    number("size of strf", 168, 40);
    number("size of the format", 172, 40);
    number("width of the format", 176, 854);
    QTest::newRow("planes and bits") << 184 << QByteArray("\1\0\30\0", 4);
    text("compression", 188, "H264");
    number("size of a picture", 192, 854 * 480 * 3);
    text("info list", 212, "LIST");
    number("size of the info list", 216, 76);
    text("software", 220, "INFOISFT");
    number("size of the software", 228, 64);
    text("junk", 296, "JUNK");
    number("size of the junk", 300, 1732);
    text("movi list", 2036, "LIST");
    number("size of movi", 2040, moviEnd - 2044);
    text("movi", 2044, "movi00db");
    number("first frame's length", 2052, 8);
    QTest::newRow("padded") << 2048 + 16 + 8 << QByteArray("abc\0", 4);
    text("index", static_cast<int>(moviEnd), "idx1");
    number("size of the index", static_cast<int>(moviEnd) + 4, 48);
    text("first entry", static_cast<int>(moviEnd) + 8, "00db");
    number("key frame", static_cast<int>(moviEnd) + 12, 16);
    number("first position", static_cast<int>(moviEnd) + 16, 2048);
    number("second is no key frame", static_cast<int>(moviEnd) + 28, 0);
    number("third position", static_cast<int>(moviEnd) + 48, 2048 + 16 + 12);
    number("third length", static_cast<int>(moviEnd) + 52, 5);
}

void tst_AviWriter::headerField() {
    QFETCH(int, position);
    QFETCH(QByteArray, value);
    {
        const auto writer = AviWriter::openOutput(path());
        QVERIFY(writer != nullptr);
        QCOMPARE(readAll(file_), QByteArray(2048, '\0'));
        QCOMPARE(writer->setVideo(854, 480, 30000.0 / 1001, "H264"), 0);
        // Provisional: no index yet.
        QCOMPARE(numberAt(readAll(file_), 44), 0x100U);
        QCOMPARE(writer->writeFrame(bytesOf("keyframe"), true), 0);
        QCOMPARE(writer->writeFrame(bytesOf("abc"), false), 0);
        QCOMPARE(writer->writeFrame(bytesOf("12345"), false), 0);
        QCOMPARE(writer->lastFramePosition(), 2048U + 16 + 12);
        QCOMPARE(writer->lastFrameLength(), 5U);
        QCOMPARE(writer->largestChunk(), 8U);
        QCOMPARE(writer->close(), 0);
    }
    const QByteArray file = readAll(file_);
    QCOMPARE(file.size(), 2048 + 16 + 12 + 14 + 8 + 48);
    QCOMPARE(file.mid(position, value.size()), value);
}

void tst_AviWriter::audioTracks() {
    const auto writer = AviWriter::openOutput(path());
    QVERIFY(writer != nullptr);
    const CodedVideo video = CodedVideo::make(5);
    QCOMPARE(writer->setVideo(320, 180, 25.0, "H264"), 0);
    avi::AudioTrack track;
    track.formatTag = 6; // A-law
    track.channels = 1;
    track.rate = 8000;
    track.bits = 8;
    track.bitRate = 64;
    QCOMPARE(writer->addAudioTrack(track), 1);
    for (std::size_t i = 0; i < video.frames.size(); ++i) {
        QCOMPARE(writer->writeFrame(bytesOf(video.frames[i]), video.isKey(i)), 0);
        QCOMPARE(writer->writeAudio(1, bytesOf(QByteArray(320, '\xd5'))), 0);
    }
    QCOMPARE(writer->writeAudio(2, bytesOf("x")), -1);
    QCOMPARE(writer->close(), 0);
    const QByteArray file = readAll(file_);
    QCOMPARE(numberAt(file, 16), 292U);
    QCOMPARE(file.mid(212, 4), QByteArray("LIST"));
    QCOMPARE(numberAt(file, 216), 92U);
    QCOMPARE(numberAt(file, 400), 1632U);
    QCOMPARE(file.mid(312, 4), QByteArray("LIST"));
    QCOMPARE(ProbedVideo::of(file_).frames, 5);
    QVERIFY(file.contains("01wb"));
}

void tst_AviWriter::tooManyTracksEndTheProcess() {
    int pipes[2];
    QCOMPARE(pipe(pipes), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(pipes[1], 2);
        avi::Header header;
        header.tracks.resize(18);
        avi::headerBytes(header);
        _exit(0);
    }
    ::close(pipes[1]);
    char said[100]{};
    QVERIFY(::read(pipes[0], said, sizeof said - 1) > 0);
    ::close(pipes[0]);
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 1);
    QCOMPARE(QByteArray(said), QByteArray("AVI_close_output_file: # of header bytes too small\n"));
    avi::Header most;
    most.tracks.resize(17);
    QCOMPARE(avi::headerBytes(most).size(), avi::HeaderSize);
}

void tst_AviWriter::judgedByFfprobe_data() {
    QTest::addColumn<int>("frames");
    QTest::addColumn<int>("keyInterval");
    QTest::addColumn<int>("rate");
    QTest::newRow("one frame") << 1 << 25 << 25;
    QTest::newRow("25 a second") << 110 << 25 << 25;
    QTest::newRow("12 a second, rare keys") << 130 << 60 << 12;
    QTest::newRow("more than one step of the index") << 4200 << 50 << 25;
}

void tst_AviWriter::judgedByFfprobe() {
    QFETCH(int, frames);
    QFETCH(int, keyInterval);
    QFETCH(int, rate);
    const CodedVideo video = CodedVideo::make(frames, keyInterval, rate, 64, 48);
    QCOMPARE(static_cast<int>(video.frames.size()), frames);
    const auto writer = AviWriter::openOutput(path());
    QVERIFY(writer != nullptr);
    QCOMPARE(writer->setVideo(64, 48, rate, "H264"), 0);
    for (std::size_t i = 0; i < video.frames.size(); ++i)
        QCOMPARE(writer->writeFrame(bytesOf(video.frames[i]), avi::isKeyFrame(bytesOf(video.frames[i]))), 0);
    QCOMPARE(writer->close(), 0);
    const ProbedVideo probed = ProbedVideo::of(file_);
    QCOMPARE(probed.problems, QString());
    QCOMPARE(probed.codec, QStringLiteral("h264"));
    QCOMPARE(probed.frames, frames);
    QCOMPARE(probed.keyFrames, (frames + keyInterval - 1) / keyInterval);
    QCOMPARE(probed.size, QStringLiteral("64x48"));
    QCOMPARE(probed.frameRate, QStringLiteral("%1/1").arg(rate));
    QVERIFY(qAbs(probed.duration - static_cast<double>(frames) / rate) < 0.05);
}

void tst_AviWriter::oddFramesArePadded() {
    const auto writer = AviWriter::openOutput(path());
    QCOMPARE(writer->setVideo(8, 8, 25, "RGB2"), 0);
    QCOMPARE(writer->writeFrame(bytesOf(QByteArray(1001, 'x')), true), 0);
    QCOMPARE(writer->writePosition(), 2048U + 1010U);
    QCOMPARE(readAll(file_).size(), 2048 + 1010); // handed over, not held back
    QCOMPARE(readAll(file_).mid(112, 4), QByteArray(4, '\0'));
}

void tst_AviWriter::unknownRate() {
    for (const double rate : {0.0, 0.0009, -3.0}) {
        avi::Header values;
        values.framesPerSecond = rate;
        const auto header = avi::headerBytes(values);
        QCOMPARE(avi::readNumber(header, 32), 0U);
        QCOMPARE(avi::readNumber(header, 132), 0U);
    }
}

void tst_AviWriter::sizeLimit() {
    const auto writer = AviWriter::openOutput(path());
    QCOMPARE(writer->setVideo(8, 8, 25, "H264"), 0);
    // Never read: it is refused by its length.
    static const std::byte one{};
    QCOMPARE(writer->writeFrame({&one, 0xFEFFF800U - 2048 - 32}, true), -1);
    QCOMPARE(AviWriter::lastError(), Error::SizeLimit);
    QCOMPARE(writer->writePosition(), 2048U);
    QCOMPARE(writer->writeFrame(bytesOf("x"), true), 0);
    QCOMPARE(writer->videoFrames(), 1U);
}

void tst_AviWriter::cannotBeOpened() {
    QVERIFY(AviWriter::openOutput(dir_->filePath(QStringLiteral("no/such/folder.avi")).toStdString()) == nullptr);
    QCOMPARE(AviWriter::lastError(), Error::Open);
    QVERIFY(AviWriter::openOutput(dir_->path().toStdString()) == nullptr);
    QVERIFY(AviWriter::openOutput("/dev/full") == nullptr);
    QCOMPARE(AviWriter::lastError(), Error::Write);
}

void tst_AviWriter::closedTakesNothing() {
    const auto writer = AviWriter::openOutput(path());
    QCOMPARE(writer->close(), 0);
    const QByteArray file = readAll(file_);
    QCOMPARE(writer->writeFrame(bytesOf("x"), true), -1);
    QCOMPARE(AviWriter::lastError(), Error::ReadOnly);
    QCOMPARE(writer->setVideo(1, 1, 1, "H264"), -1);
    QCOMPARE(writer->close(), -1);
    QCOMPARE(readAll(file_), file);
}

void tst_AviWriter::oneWriterAFile() {
    auto writer = AviWriter::openOutput(path());
    QVERIFY(writer != nullptr);
    QVERIFY(AviWriter::openOutput(path()) == nullptr);
    QVERIFY(corvanta::platform::RawFile::isBeingWritten(path()));
    writer.reset();
    QVERIFY(!corvanta::platform::RawFile::isBeingWritten(path()));
    QVERIFY(AviWriter::openOutput(path()) != nullptr);
}

// What could not be written is not in the file; what comes when there is room again, is.
void tst_AviWriter::fullDisk() {
    const CodedVideo video = CodedVideo::make(30, 10);
    const auto writer = AviWriter::openOutput(path());
    QCOMPARE(writer->setVideo(320, 180, 25, "H264"), 0);
    std::size_t taken = 0;
    {
        const SmallDisk disk(2048 + 8 * 10 + static_cast<rlim_t>(video.frames[0].size()) + 3000);
        while (taken < 10 && writer->writeFrame(bytesOf(video.frames[taken]), video.isKey(taken)) == 0)
            ++taken;
        QVERIFY(taken >= 1 && taken < 10);
        QCOMPARE(AviWriter::lastError(), Error::Write);
    }
    for (std::size_t i = 10; i < video.frames.size(); ++i)
        QCOMPARE(writer->writeFrame(bytesOf(video.frames[i]), video.isKey(i)), 0);
    QCOMPARE(writer->close(), 0);
    const ProbedVideo probed = ProbedVideo::of(file_);
    QCOMPARE(probed.problems, QString());
    QCOMPARE(probed.frames, static_cast<int>(taken) + 20);
}

void tst_AviWriter::indexThatDoesNotFit() {
    const auto writer = AviWriter::openOutput(path());
    QCOMPARE(writer->setVideo(8, 8, 25, "H264"), 0);
    for (int i = 0; i < 10; ++i)
        QCOMPARE(writer->writeFrame(bytesOf("12345678"), i == 0), 0);
    const SmallDisk disk(2048 + 160 + 50);
    QCOMPARE(writer->close(), -1);
    QCOMPARE(AviWriter::lastError(), Error::Index);
    const QByteArray file = readAll(file_);
    QCOMPARE(file.size(), 2048 + 160);
    QCOMPARE(numberAt(file, 44), 0x100U);
    QCOMPARE(numberAt(file, 48), 10U);
}

QTEST_GUILESS_MAIN(tst_AviWriter)
#include "tst_AviWriter.moc"
