#include "MadeVideo.h"
#include "RecordingListener.h"
#include "media/StreamHub.h"
#include "media/file/FileClock.h"

#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <filesystem>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

/// Recorded files that are played as cameras, made by the ffmpeg command.
class tst_VideoFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void plays_data();
    void plays();
    void unitsAreWhole();
    void refuses_data();
    void refuses();
    void leadsNowhereElse();
    void isLostAndFound_data();
    void isLostAndFound();
    void anotherFileInItsPlace();
    void manyAtOnce();
    void clock();

private:
    HubOptions options();
    Subscription camera(const QString& name, bool decoded = true, bool coded = true) const;
    std::filesystem::path path(const QString& name) const { return folder_.filePath(name).toStdString(); }
    bool make(const QString& name, const QString& arguments) const {
        return makeVideo(folder_.filePath(name), arguments);
    }

    QTemporaryDir folder_;
};

namespace {

/// A second of a test picture.
constexpr auto source = "-f lavfi -i testsrc=size=%1:rate=%2:duration=1 ";
constexpr auto x264 = "-c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 10 -bf 0 ";

QString film(const char* size, int rate, const char* more = "") {
    return QString(source).arg(size).arg(rate) + x264 + more;
}

} // namespace

HubOptions tst_VideoFiles::options() {
    HubOptions options;
    options.loopFolder = "unused";
    options.firstPause = 20ms;
    options.longestPause = 100ms;
    return options;
}

Subscription tst_VideoFiles::camera(const QString& name, bool decoded, bool coded) const {
    return {name.toStdString(), Quality::Main, FileSource{path(name)}, decoded, coded, {}};
}

void tst_VideoFiles::initTestCase() {
    QVERIFY(make("plain.mp4", film("320x240", 25)));
    QVERIFY(make("plain.mkv", film("320x240", 25)));
    QVERIFY(make("reordered.mp4", film("320x240", 25, "-bf 3 -x264-params b-pyramid=normal:scenecut=0")));
    QVERIFY(make("reordered.mkv", film("320x240", 25, "-bf 3 -x264-params b-pyramid=normal:scenecut=0")));
    QVERIFY(make("slow.mp4", film("854x480", 15)));
    QVERIFY(make("fraction.mp4", film("320x240", 30, "-r 30000/1001")));
    QVERIFY(make("stream.ts", film("320x240", 25)));
    QVERIFY(make("bare.h264", film("320x240", 25)));
    QVERIFY(make("sound too.mp4", "-f lavfi -i sine=duration=1 " + film("320x240", 25, "-c:a aac -shortest")));
    QVERIFY(make("大门.mp4", film("320x240", 25, "-movflags +faststart")));
    QVERIFY(make("sound.mp4", "-f lavfi -i sine=duration=1 -c:a aac"));
    QVERIFY(make("mpeg4.mp4", QString(source).arg("320x240").arg(25) + "-c:v mpeg4"));
    QVERIFY(make("jpeg.avi", QString(source).arg("320x240").arg(25) + "-c:v mjpeg -pix_fmt yuvj420p"));
    for (const char* name : {"plain.mp4", "plain.mkv"}) {
        const QString cut = QString("cut ") + name;
        QVERIFY(QFile::copy(folder_.filePath(name), folder_.filePath(cut)));
        QVERIFY(QFile::resize(folder_.filePath(cut), QFileInfo(folder_.filePath(cut)).size() / 2));
    }
    QFile text(folder_.filePath("text.mp4"));
    QVERIFY(text.open(QFile::WriteOnly) && text.write(QByteArray(100000, 'x')) > 0);
    QVERIFY(QFile(folder_.filePath("empty.mp4")).open(QFile::WriteOnly));
    QVERIFY(QDir(folder_.path()).mkdir("folder.mp4"));
}

void tst_VideoFiles::plays_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("frames"); // of one time through
    const auto row = [](const char* name, int width, int height, int rate, int frames) {
        QTest::newRow(name) << QString(name) << width << height << rate << frames;
    };
    row("plain.mp4", 320, 240, 25, 25);
    row("plain.mkv", 320, 240, 25, 25);
    row("reordered.mp4", 320, 240, 25, 25);
    row("reordered.mkv", 320, 240, 25, 25);
    row("slow.mp4", 854, 480, 15, 15);
    row("fraction.mp4", 320, 240, 30, 30);
    row("stream.ts", 320, 240, 25, 25);
    row("bare.h264", 320, 240, 25, 25);
    row("sound too.mp4", 320, 240, 25, 25);
    row("大门.mp4", 320, 240, 25, 25);
    row("cut plain.mkv", 320, 240, 25, 0);
}

void tst_VideoFiles::plays() {
    QFETCH(QString, name);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, rate);
    QFETCH(int, frames);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    std::vector<std::chrono::microseconds> shown;
    listener->onPicture = [&](const DecodedFrame& frame) {
        shown.push_back(frame.time);
    };
    const auto id = hub.subscribe(camera(name), listener);
    const int wanted = frames == 0 ? 40 : 2 * frames + 10;
    QVERIFY(listener->waitForPictures(wanted));
    hub.unsubscribe(id);
    const auto record = listener->record();
    QVERIFY((record.stages == std::vector<OpenStage>{OpenStage::Information, OpenStage::Loading}));
    QCOMPARE(record.opened.size(), std::size_t{1});
    QCOMPARE(record.opened[0].width, width);
    QCOMPARE(record.opened[0].height, height);
    QCOMPARE(record.opened[0].frameRate, rate);
    QCOMPARE(record.opened[0].connectionType, std::string("FILE"));
    QCOMPARE(record.newest.width, width);
    // Not a picture is missing, and each follows the one before after one frame's time, also from loop to loop.
    const double period = 1e6 / (name.startsWith("fraction") ? 30000.0 / 1001 : rate);
    for (std::size_t index = 1; index < shown.size(); ++index) {
        const auto step = static_cast<double>((shown[index] - shown[index - 1]).count());
        QVERIFY2(std::abs(step - period) < 2000, qPrintable(QString("%1: %2").arg(index).arg(step)));
    }
    if (frames > 0) {
        QVERIFY(record.coded[0].bytes == record.coded[static_cast<std::size_t>(frames)].bytes);
        QVERIFY(record.coded[1].bytes == record.coded[static_cast<std::size_t>(frames) + 1].bytes);
    }
    for (const auto& unit : record.coded) {
        const QByteArray head(reinterpret_cast<const char*>(unit.bytes.data()), 5);
        QCOMPARE(head == QByteArray::fromHex("0000000167"), unit.keyFrame);
    }
}

void tst_VideoFiles::unitsAreWhole() {
    // What was handed out, read by another decoder, gives the pictures of the file.
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(camera("reordered.mp4", false), listener);
    QVERIFY(listener->waitForCoded(25));
    hub.unsubscribe(id);
    QFile out(folder_.filePath("out.bin"));
    QVERIFY(out.open(QFile::WriteOnly));
    const auto record = listener->record();
    for (std::size_t index = 0; index < 25; ++index) {
        const auto& bytes = record.coded[index].bytes;
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    }
    out.close();
    const auto sums = [this](const QString& arguments, const QString& name) {
        QProcess ffmpeg;
        QStringList list = arguments.split(' ', Qt::SkipEmptyParts);
        ffmpeg.start("ffmpeg", QStringList{"-v", "error"} + list << folder_.filePath(name) << "-an"
                                                                 << "-f"
                                                                 << "framemd5"
                                                                 << "-");
        ffmpeg.waitForFinished(120000);
        QByteArrayList result;
        for (const QByteArray& line : ffmpeg.readAllStandardOutput().split('\n')) {
            if (!line.startsWith('#') && !line.isEmpty()) {
                result << line.split(',').back().trimmed();
            }
        }
        return result;
    };
    const auto expected = sums("-i", "reordered.mp4");
    QCOMPARE(expected.size(), 25);
    QCOMPARE(sums("-f h264 -i", "out.bin"), expected);
}

void tst_VideoFiles::refuses_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("reason");
    const auto missing = static_cast<int>(StreamError::StreamNotFound);
    const auto useless = static_cast<int>(StreamError::CodecNotSupported);
    QTest::newRow("missing") << "nothing.mp4" << missing;
    QTest::newRow("in a missing folder") << "none/nothing.mp4" << missing;
    QTest::newRow("folder") << "folder.mp4" << missing;
    QTest::newRow("below a file") << "plain.mp4/x.mp4" << missing;
    for (const char* name : {"empty.mp4", "text.mp4", "sound.mp4", "mpeg4.mp4", "jpeg.avi", "cut plain.mp4"}) {
        QTest::newRow(name) << name << useless;
    }
}

void tst_VideoFiles::refuses() {
    QFETCH(QString, name);
    QFETCH(int, reason);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera(name), listener);
    QCOMPARE(static_cast<int>(listener->waitForClose().value_or(StreamError::None)), reason);
    QVERIFY(listener->record().opened.empty());
    std::vector<std::uint8_t> jpeg;
    QCOMPARE(static_cast<int>(hub.preview(camera(name), 100, 60s, jpeg)), reason);
}

void tst_VideoFiles::leadsNowhereElse() {
    // Files that name other files are no videos, whatever they are called.
    const QByteArray target = folder_.filePath("plain.mp4").toUtf8();
    const std::pair<const char*, QByteArray> lists[] = {
        {"list.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nfile:" + target + "\n#EXT-X-ENDLIST\n"},
        {"list.ffconcat", "ffconcat version 1.0\nfile '" + target + "'\n"}};
    for (const auto& [name, content] : lists) {
        QFile file(folder_.filePath(name));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(content) > 0);
        file.close();
        StreamHub hub(options());
        const auto listener = std::make_shared<RecordingListener>();
        hub.subscribe(camera(name), listener);
        QCOMPARE(listener->waitForClose(), std::optional(StreamError::CodecNotSupported));
    }
}

void tst_VideoFiles::isLostAndFound_data() {
    QTest::addColumn<QByteArray>("accident");
    QTest::newRow("removed") << QByteArray("removed");
    QTest::newRow("cut off") << QByteArray("cut off");
    QTest::newRow("overwritten") << QByteArray("overwritten");
}

void tst_VideoFiles::isLostAndFound() {
    QFETCH(QByteArray, accident);
    const QString name = folder_.filePath("unlucky.mp4");
    QFile::remove(name);
    QVERIFY(QFile::copy(folder_.filePath("plain.mp4"), name));
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera("unlucky.mp4"), listener);
    QVERIFY(listener->waitForPictures(5));
    if (accident == "removed") {
        QVERIFY(QFile::remove(name));
    } else if (accident == "cut off") {
        QVERIFY(QFile::resize(name, 1000));
    } else {
        QFile file(name);
        QVERIFY(file.open(QFile::ReadWrite));
        QVERIFY(file.write(QByteArray(static_cast<int>(file.size()), 'x')) > 0);
    }
    QVERIFY(listener->waitFor([](const auto& record) {
        return std::count(record.stages.begin(), record.stages.end(), OpenStage::Connecting) > 1;
    }));
    const auto before = listener->record();
    QVERIFY(!before.closed);
    QFile::remove(name);
    QVERIFY(QFile::copy(folder_.filePath("plain.mp4"), name));
    QVERIFY(listener->waitFor([](const auto& record) { return record.opened.size() == 2; }));
    QVERIFY(listener->waitForPictures(before.decoded + 5));
    const auto record = listener->record();
    QVERIFY(!record.closed);
    QVERIFY(record.coded[before.coded.size()].keyFrame);
    QVERIFY(record.timesGoOn());
}

void tst_VideoFiles::anotherFileInItsPlace() {
    const QString name = folder_.filePath("replaced.mp4");
    QVERIFY(QFile::copy(folder_.filePath("plain.mp4"), name));
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(camera("replaced.mp4"), listener);
    QVERIFY(listener->waitForPictures(5));
    std::filesystem::copy_file(path("slow.mp4"), path("new.mp4"));
    std::filesystem::rename(path("new.mp4"), path("replaced.mp4"));
    QVERIFY(listener->waitFor([](const auto& record) { return record.sizes.size() == 2; }));
    const auto record = listener->record();
    QCOMPARE(record.opened.back().width, 854);
    QCOMPARE(record.opened.back().frameRate, 15);
    QVERIFY((record.sizes.back() == std::pair(854, 480)));
}

void tst_VideoFiles::manyAtOnce() {
    StreamHub hub(options());
    std::vector<std::shared_ptr<RecordingListener>> listeners;
    for (int number = 0; number < 64; ++number) {
        Subscription subscription = camera("plain.mp4", number % 4 == 0);
        subscription.camera += std::to_string(number);
        listeners.push_back(std::make_shared<RecordingListener>());
        hub.subscribe(subscription, listeners.back());
    }
    for (const auto& listener : listeners) {
        QVERIFY(listener->waitForCoded(30));
        QVERIFY(!listener->record().closed);
    }
}

void tst_VideoFiles::clock() {
    FileClock clock;
    clock.describe(40ms, 0);
    QVERIFY(!clock.dueOf(0ms)); // nothing is known yet
    const auto at = [&](std::optional<std::chrono::microseconds> decode,
                        std::optional<std::chrono::microseconds> show) {
        const auto times = clock.at(decode, show);
        return std::pair(times.due, times.shown);
    };
    using Pair = std::pair<std::chrono::microseconds, std::chrono::microseconds>;
    QVERIFY(at(-80ms, 0ms) == Pair(0ms, 80ms)); // stamps may begin anywhere
    QVERIFY(at(-40ms, 120ms) == Pair(40ms, 200ms));
    QVERIFY(clock.dueOf(-40ms) == 40ms); // sound of the same moment, and before and behind it
    QVERIFY(clock.dueOf(-90ms) == -10ms);
    QVERIFY(clock.dueOf(1s) == 1080ms);
    QVERIFY(!clock.dueOf(20s) && !clock.dueOf(-20s));
    QVERIFY(at(0ms, 40ms) == Pair(80ms, 120ms));
    QVERIFY(at(40ms, {}) == Pair(120ms, 120ms));
    QVERIFY(at({}, {}) == Pair(160ms, 160ms));
    QVERIFY(at(120ms, 0ms) == Pair(200ms, 200ms)); // shown before it is there
    QVERIFY(at(9h, 10h) == Pair(240ms, 5240ms));   // a jump counts as one frame
    QVERIFY(at(9h + 500ms, 9h + 500ms) == Pair(740ms, 740ms));
    QVERIFY(at(0ms, 0ms) == Pair(780ms, 780ms));
    clock.beginLoop();
    QCOMPARE(clock.next(), std::chrono::microseconds(820ms));
    QVERIFY(!clock.dueOf(0ms));
    QVERIFY(at(0ms, 0ms) == Pair(820ms, 820ms));
    QVERIFY(clock.dueOf(30ms) == 850ms);
    QVERIFY(at(100ms, 100ms) == Pair(920ms, 920ms));
    QVERIFY(at({}, 140ms) == Pair(960ms, 960ms));
    // Show stamps alone, of pictures that are reordered by up to two frames.
    FileClock reordered;
    reordered.describe(40ms, 2);
    const auto show = [&](std::chrono::microseconds stamp) {
        const auto times = reordered.at({}, stamp);
        return std::pair(times.due, times.shown);
    };
    for (int loop = 0; loop < 2; ++loop) {
        const auto begin = loop * 360ms;
        reordered.beginLoop();
        int unit = 0;
        for (const int stamp : {0, 160, 80, 40, 120, 320, 240, 200, 280}) {
            QVERIFY(show(7s + stamp * 1ms) == Pair(begin + unit++ * 40ms, begin + 80ms + stamp * 1ms));
        }
    }
    QVERIFY(reordered.dueOf(7s + 320ms) == 360ms + 320ms);
    QVERIFY(show(7s + 3000ms) == Pair(3360ms, 3440ms)); // a picture that stood for long
    QVERIFY(show(0s) == Pair(3400ms, 3400ms + 80ms));
}

QTEST_GUILESS_MAIN(tst_VideoFiles)
#include "tst_VideoFiles.moc"
