#include "media/FrameRing.h"
#include "media/StreamHub.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fstream>
#include <thread>

using namespace ipncsdk::media;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// The last seconds of a stream, by a set clock and of a real one.
class tst_FrameRing final : public QObject {
    Q_OBJECT

private slots:
    void keepsWholeGroups();
    void begunAnewIsEmptyFirst();
    void realStreamMakesAFile();
};

namespace {

FrameRing::Time at(int time) {
    return FrameRing::Time(seconds(1000)) + milliseconds(time);
}

/// Ten frames a second, each tenth a key frame.
void feed(FrameRing& ring, int from, int to) {
    const std::vector<std::uint8_t> bytes(100, 7);
    for (int number = from; number < to; ++number)
        ring.take({bytes.data(), bytes.size(), number % 10 == 0, milliseconds(number * 100)}, at(number * 100));
}

} // namespace

void tst_FrameRing::keepsWholeGroups() {
    FrameRing ring(seconds(5));
    feed(ring, 5, 10); // nothing can begin without a key frame
    QVERIFY(ring.clip(at(0), at(100000)).frames.empty());
    feed(ring, 10, 100);
    const RingClip all = ring.clip(at(0), at(100000));
    QVERIFY(all.frames.front().keyFrame);
    QCOMPARE(all.frames.front().arrived, at(4000)); // five seconds before the last frame at least
    QCOMPARE(all.frames.back().arrived, at(9900));
    const RingClip part = ring.clip(at(6500), at(8250));
    QCOMPARE(part.frames.front().arrived, at(6000));
    QCOMPARE(part.frames.back().arrived, at(8200));
    QVERIFY(ring.clip(at(20000), at(20000)).frames.size() == 10); // the last group
}

void tst_FrameRing::begunAnewIsEmptyFirst() {
    FrameRing ring(seconds(5));
    feed(ring, 10, 50);
    feed(ring, 0, 5);
    QCOMPARE(ring.clip(at(0), at(100000)).frames.size(), std::size_t{5});
    StreamParameters other;
    other.width = 640;
    ring.onOpened(other);
    QVERIFY(ring.clip(at(0), at(100000)).frames.empty());
}

void tst_FrameRing::realStreamMakesAFile() {
    QTemporaryDir folder;
    HubOptions options;
    options.loopFolder = std::filesystem::path(folder.path().toStdString()) / "loops";
    StreamHub hub(options);
    Subscription subscription;
    subscription.camera = "a";
    subscription.source = LoopSource{"a", 0, 0};
    subscription.coded = true;
    const auto ring = std::make_shared<FrameRing>(seconds(20));
    const int id = hub.subscribe(subscription, ring);
    const auto all = [&ring] {
        return ring->clip({}, std::chrono::steady_clock::now());
    };
    QTRY_VERIFY_WITH_TIMEOUT(all().frames.size() >= 60, 120000);
    hub.unsubscribe(id);
    const RingClip clip = all();
    const std::vector<std::uint8_t> file = clip.avi();
    const QString path = folder.filePath(QStringLiteral("clip.avi"));
    std::ofstream(path.toStdString(), std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
    // Read by a program that knows nothing of ours: every frame decodes, and the times are those of the stream.
    QProcess reader;
    reader.start(QStringLiteral("ffprobe"),
                 {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-count_frames"),
                  QStringLiteral("-show_entries"), QStringLiteral("stream=codec_name,nb_read_frames,avg_frame_rate"),
                  QStringLiteral("-of"), QStringLiteral("csv=p=0"), path});
    QVERIFY(reader.waitForFinished(60000));
    QCOMPARE(reader.readAllStandardError(), QByteArray());
    QCOMPARE(reader.readAllStandardOutput().trimmed(),
             "h264,25/1," + QByteArray::number(static_cast<qulonglong>(clip.frames.size())));
}

QTEST_GUILESS_MAIN(tst_FrameRing)
#include "tst_FrameRing.moc"
