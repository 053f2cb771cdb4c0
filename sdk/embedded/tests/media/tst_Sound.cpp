#include "MadeVideo.h"
#include "RecordingListener.h"
#include "Tone.h"
#include "media/StreamHub.h"
#include "media/loop/LoopVoice.h"
#include "support/RtspServer.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <mutex>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

constexpr auto ample = std::chrono::minutes(2);
constexpr auto x264 = " -c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 10 -bf 0 ";
constexpr auto picture = "-f lavfi -i testsrc=size=320x240:rate=25:duration=1 ";

Subscription listening(const std::string& camera, Source source, Quality quality = Quality::Main) {
    return {camera, quality, std::move(source), false, false, ample, true};
}

Subscription watching(const std::string& camera, Source source, Quality quality = Quality::Main) {
    return {camera, quality, std::move(source), true, false, ample};
}

Source scene(int number) {
    return LoopSource{"scene", number, 0};
}

bool waitForSound(RecordingListener& listener, std::size_t samples) {
    const bool came = listener.waitFor([samples](const auto& record) { return record.sound.size() >= samples; });
    if (const auto record = listener.record(); !came && record.closed)
        qWarning() << "closed with" << static_cast<int>(*record.closed) << "after" << record.sound.size()
                   << "samples";
    return came;
}

} // namespace

/// What is heard: of network cameras, recorded files and recorded scenes.
class tst_Sound : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cameras_data();
    void cameras();
    void withoutSound_data();
    void withoutSound();
    void soundThatComesAndGoes();
    void soundThatIsRefused();
    void besideVideo();
    void stopInTheMiddle();
    void files_data();
    void files();
    void filesInStep();
    void fileThatLosesItsSound();
    void damagedFile();
    void scenesDiffer();
    void scenesRepeat();
    void scenesAreGentle();
    void listensToWhatRuns();

private:
    HubOptions options();
    bool make(const QString& name, const QString& arguments) const {
        return makeVideo(folder_.filePath(name), arguments);
    }
    Source file(const QString& name) const { return FileSource{folder_.filePath(name).toStdString()}; }
    std::vector<std::int16_t> hear(StreamHub& hub, const Subscription& subscription, std::size_t samples);

    RtspServer server_;
    QTemporaryDir folder_;
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

HubOptions tst_Sound::options() {
    HubOptions options;
    options.loopFolder = folder_.filePath("loops").toStdString();
    options.firstPause = 20ms;
    options.longestPause = 100ms;
    options.networkTimeout = ample;
    options.log = [this](const std::string& line) {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    };
    return options;
}

/// Listens until there are so many samples.
std::vector<std::int16_t> tst_Sound::hear(StreamHub& hub, const Subscription& subscription, std::size_t samples) {
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(subscription, listener);
    waitForSound(*listener, samples);
    hub.unsubscribe(id);
    auto sound = listener->record().sound;
    sound.resize(std::min(sound.size(), samples));
    return sound;
}

void tst_Sound::initTestCase() {
    QVERIFY(server_.start());
    const auto sine = [](int frequency, int rate) {
        return QString(picture) +
               QString("-f lavfi -i sine=frequency=%1:sample_rate=%2:duration=1").arg(frequency).arg(rate) + x264;
    };
    QVERIFY(make("aac.mp4", sine(1000, 44100) + "-c:a aac"));
    QVERIFY(make("aac.ts", sine(1000, 48000) + "-c:a aac -ac 2"));
    QVERIFY(make("high.mkv", sine(1000, 96000) + "-c:a aac -ar 96000"));
    QVERIFY(make("six.mp4", sine(1000, 48000) + "-c:a aac -ac 6"));
    QVERIFY(make("alaw.avi", sine(1000, 8000) + "-c:a pcm_alaw"));
    QVERIFY(make("mulaw.mov", sine(1000, 8000) + "-c:a pcm_mulaw"));
    QVERIFY(make("opus.mkv", sine(1000, 48000) + "-c:a libopus"));
    QVERIFY(make("silent.mp4", QString(picture) + x264));
    // Dark and still for half a second, then bright and loud.
    QVERIFY(make("flash.mp4",
                 QString("-f lavfi -i color=black:size=320x240:rate=25:duration=1,drawbox=t=fill:color=white:enable="
                         "gte(t\\,0.5) -f lavfi -i aevalsrc=if(gte(t\\,0.5)\\,0.5*sin(6283*t)\\,0):s=16000:d=1") +
                     x264 + "-c:a aac"));
}

void tst_Sound::cameras_data() {
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("frequency");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    QTest::newRow("A-law") << QByteArray("/pcma") << 700 << 8000 << 1;
    QTest::newRow("mu-law") << QByteArray("/pcmu") << 1100 << 8000 << 1;
    QTest::newRow("AAC") << QByteArray("/aac") << 1500 << 44100 << 2;
}

void tst_Sound::cameras() {
    QFETCH(QByteArray, path);
    QFETCH(int, frequency);
    QFETCH(int, rate);
    QFETCH(int, channels);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(listening("camera", RtspSource{server_.url(path), "", ""}), listener);
    QVERIFY(waitForSound(*listener, static_cast<std::size_t>(rate * channels * 2)));
    const auto record = listener->record();
    QCOMPARE(record.opened.size(), std::size_t{1});
    QVERIFY(record.opened[0].sound && !record.opened[0].talk);
    QCOMPARE(record.opened[0].width, 320);
    QVERIFY((record.soundForm == std::pair(rate, channels)));
    QCOMPARE(record.decoded, 0);
    for (int channel = 0; channel < channels; ++channel) {
        // A quarter of a second: where a camera drops a packet, the tone's phase is another behind it.
        auto heard = channelOf(record.sound, channels, channel);
        const auto quarter = static_cast<std::size_t>(rate / 4);
        const auto piece = std::span(heard).subspan(heard.size() - quarter, quarter);
        QVERIFY(shareOf(frequency, piece, rate) > 0.9);
        QVERIFY(shareOf(frequency * 1.25, piece, rate) < 0.1);
        QVERIFY(std::abs(*std::max_element(piece.begin(), piece.end()) - 16384) < 1700);
    }
}

void tst_Sound::withoutSound_data() {
    QTest::addColumn<QString>("source");
    QTest::newRow("camera") << "/live";
    QTest::newRow("camera with sound of another codec") << "/opus";
    QTest::newRow("file") << "silent.mp4";
    QTest::newRow("file with sound of another codec") << "opus.mkv";
}

void tst_Sound::withoutSound() {
    QFETCH(QString, source);
    StreamHub hub(options());
    const Source from =
        source.startsWith('/') ? Source(RtspSource{server_.url(source.toUtf8().constData()), "", ""}) : file(source);
    const auto listener = std::make_shared<RecordingListener>();
    const auto viewer = std::make_shared<RecordingListener>();
    hub.subscribe(watching("camera", from), viewer);
    hub.subscribe(listening("camera", from), listener);
    QCOMPARE(listener->waitForClose(), std::optional(StreamError::NoSound));
    QTRY_COMPARE_WITH_TIMEOUT(listener.use_count(), 1L, 60000);
    QVERIFY(listener->record().opened.empty());
    // Who watches notices nothing, and who comes later is told the same.
    QVERIFY(viewer->waitForPictures(5));
    QVERIFY(!viewer->record().opened[0].sound);
    const auto late = std::make_shared<RecordingListener>();
    hub.subscribe(listening("camera", from), late);
    QCOMPARE(late->waitForClose(), std::optional(StreamError::NoSound));
    QVERIFY(viewer->waitForPictures(viewer->record().decoded + 5));
}

void tst_Sound::soundThatComesAndGoes() {
    StreamHub hub(options());
    const Source source = RtspSource{server_.url("/quiet"), "", ""};
    const auto listener = std::make_shared<RecordingListener>();
    const auto viewer = std::make_shared<RecordingListener>();
    std::vector<std::chrono::microseconds> shown;
    viewer->onPicture = [&](const DecodedFrame& frame) {
        shown.push_back(frame.time);
    };
    const auto id = hub.subscribe(watching("camera", source), viewer);
    hub.subscribe(listening("camera", source), listener);
    // More sound than comes before the first pause, and in the end after the second.
    QVERIFY(waitForSound(*listener, 8000 * 5 / 2));
    QVERIFY(viewer->waitForPictures(viewer->record().decoded + 5));
    hub.unsubscribe(id);
    QCOMPARE(viewer->record().opened.size(), std::size_t{1});
    QCOMPARE(listener->record().opened.size(), std::size_t{1});
    for (std::size_t index = 1; index < shown.size(); ++index) {
        QVERIFY(shown[index] > shown[index - 1]);
    }
}

void tst_Sound::soundThatIsRefused() {
    StreamHub hub(options());
    const auto viewer = std::make_shared<RecordingListener>();
    hub.subscribe(watching("camera", RtspSource{server_.url("/nosetup"), "", ""}), viewer);
    QVERIFY(viewer->waitForPictures(5));
    QVERIFY(!viewer->record().opened[0].sound);
}

void tst_Sound::besideVideo() {
    // Pictures that come and go leave the sound alone, and the other way round.
    StreamHub hub(options());
    const Source source = RtspSource{server_.url("/pcma"), "", ""};
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(listening("camera", source), listener);
    for (int round = 0; round < 3; ++round) {
        const auto viewer = std::make_shared<RecordingListener>();
        const auto viewerId = hub.subscribe(watching("camera", source), viewer);
        QVERIFY(viewer->waitForPictures(3));
        QVERIFY(waitForSound(*listener, listener->record().sound.size() + 2000));
        hub.unsubscribe(viewerId);
        QVERIFY(waitForSound(*listener, listener->record().sound.size() + 2000));
        QVERIFY(viewer->record().sound.empty());
    }
    const auto viewer = std::make_shared<RecordingListener>();
    hub.subscribe(watching("camera", source), viewer);
    QVERIFY(viewer->waitForPictures(3));
    hub.unsubscribe(id);
    QVERIFY(viewer->waitForPictures(viewer->record().decoded + 5));
    const auto record = listener->record();
    QCOMPARE(record.opened.size(), std::size_t{1});
    QVERIFY(!record.closed);
    QCOMPARE(viewer->record().opened.size(), std::size_t{1});
}

void tst_Sound::stopInTheMiddle() {
    StreamHub hub(options());
    // The test camera needs a moment to end a stream that nobody watches any more.
    const auto witness = std::make_shared<RecordingListener>();
    hub.subscribe(watching("witness", RtspSource{server_.url("/aac"), "", ""}), witness);
    QVERIFY(witness->waitForPictures(1));
    for (const Source& source : {Source(RtspSource{server_.url("/aac"), "", ""}), file("aac.mp4"), scene(3)}) {
        const auto listener = std::make_shared<RecordingListener>();
        std::atomic<int> id{0};
        std::atomic<bool> stopped{false};
        std::atomic<int> late{0};
        listener->onAnything = [&] {
            late += stopped ? 1 : 0;
        };
        id = hub.subscribe(listening("camera", source), listener);
        QVERIFY(waitForSound(*listener, 1000));
        hub.unsubscribe(id);
        stopped = true;
        const auto other = std::make_shared<RecordingListener>();
        const auto otherId = hub.subscribe(listening("camera", source), other);
        QVERIFY(waitForSound(*other, 2000));
        hub.unsubscribe(otherId);
        QCOMPARE(late.load(), 0);
        QCOMPARE(listener.use_count(), 1L);
    }
}

void tst_Sound::files_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    const auto row = [](const char* name, int rate, int channels) {
        QTest::newRow(name) << QString(name) << rate << channels;
    };
    row("aac.mp4", 44100, 1);
    row("aac.ts", 48000, 2);
    row("high.mkv", 48000, 1);
    row("six.mp4", 48000, 2);
    row("alaw.avi", 8000, 1);
    row("mulaw.mov", 8000, 1);
}

void tst_Sound::files() {
    QFETCH(QString, name);
    QFETCH(int, rate);
    QFETCH(int, channels);
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(listening("film", file(name)), listener);
    // Over the end of the file, which lasts a second.
    QVERIFY(waitForSound(*listener, static_cast<std::size_t>(rate * channels * 5 / 2)));
    const auto record = listener->record();
    QVERIFY(record.opened[0].sound);
    QVERIFY((record.soundForm == std::pair(rate, channels)));
    const auto heard = channelOf(record.sound, channels, 0);
    int loud = 0;
    int pieces = 0;
    const auto length = static_cast<std::size_t>(rate / 20);
    for (std::size_t begin = 0; begin + length <= heard.size(); begin += length, ++pieces) {
        loud += shareOf(1000, std::span(heard).subspan(begin, length), rate) > 0.9 ? 1 : 0;
    }
    // Only where the file begins anew a piece may be broken, and where a coder swells in.
    QVERIFY2(loud >= pieces - 8, qPrintable(QString("%1 of %2").arg(loud).arg(pieces)));
}

void tst_Sound::filesInStep() {
    StreamHub hub(options());
    const auto both = std::make_shared<RecordingListener>();
    struct Flash {
        std::size_t samples; ///< that had been heard when the picture came
        bool bright;
    };
    std::vector<Flash> flashes;
    both->onPicture = [&](const DecodedFrame& frame) {
        const bool bright = frame.data[0] > 128;
        if (flashes.empty() || flashes.back().bright != bright) {
            flashes.push_back({both->record().sound.size(), bright});
        }
    };
    Subscription subscription = watching("film", file("flash.mp4"));
    subscription.sound = true;
    const auto id = hub.subscribe(subscription, both);
    QVERIFY(waitForSound(*both, 16000 * 4));
    hub.unsubscribe(id);
    // When it becomes bright it becomes loud, within a picture's and a packet's time, in every loop.
    const auto sound = both->record().sound;
    const auto loudness = [&](std::size_t begin) {
        int peak = 0;
        for (std::size_t index = begin; index < std::min(begin + 1600, sound.size()); ++index) {
            peak = std::max(peak, std::abs(static_cast<int>(sound[index])));
        }
        return peak;
    };
    int checked = 0;
    for (const Flash& flash : flashes) {
        if (flash.samples < 4000 || flash.samples + 4000 > sound.size()) {
            continue;
        }
        ++checked;
        const int before = loudness(flash.samples - 3200);
        const int after = loudness(flash.samples + 1600);
        QVERIFY2(flash.bright ? before < 2000 && after > 10000 : before > 10000 && after < 2000,
                 qPrintable(QString("%1: %2, %3").arg(flash.samples).arg(before).arg(after)));
    }
    QVERIFY(checked >= 4);
}

void tst_Sound::fileThatLosesItsSound() {
    const QString name = folder_.filePath("changes.mp4");
    QVERIFY(QFile::copy(folder_.filePath("aac.mp4"), name));
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    const auto viewer = std::make_shared<RecordingListener>();
    hub.subscribe(watching("film", file("changes.mp4")), viewer);
    hub.subscribe(listening("film", file("changes.mp4")), listener);
    QVERIFY(waitForSound(*listener, 1000));
    QVERIFY(QFile::copy(folder_.filePath("silent.mp4"), folder_.filePath("new.mp4")));
    std::filesystem::rename(folder_.filePath("new.mp4").toStdString(), name.toStdString());
    QCOMPARE(listener->waitForClose(), std::optional(StreamError::NoSound));
    QVERIFY(viewer->waitFor([](const auto& record) { return record.opened.size() == 2; }));
    QVERIFY(viewer->waitForPictures(viewer->record().decoded + 5));
    QVERIFY(!viewer->record().closed);
}

void tst_Sound::damagedFile() {
    // Packets of another stream in the place of sound: nothing but the sound is lost.
    QVERIFY(make("damaged.mkv", QString("-i %1 -c copy -bsf:a noise=amount=20").arg(folder_.filePath("aac.mp4"))));
    StreamHub hub(options());
    Subscription subscription = watching("film", file("damaged.mkv"));
    subscription.sound = true;
    const auto both = std::make_shared<RecordingListener>();
    hub.subscribe(subscription, both);
    QVERIFY(both->waitForPictures(60));
    QCOMPARE(both->record().opened.size(), std::size_t{1});
}

void tst_Sound::scenesDiffer() {
    // One turn of each pattern: two seconds.
    std::vector<std::vector<std::int16_t>> patterns;
    for (int number = 0; number < LoopVoice::patterns; ++number) {
        LoopVoice voice(number, std::make_shared<TalkLine>());
        auto& pattern = patterns.emplace_back();
        for (int frame = 0; frame < 50; ++frame) {
            const SoundBlock block = voice.next(frame);
            pattern.insert(pattern.end(), block.samples, block.samples + block.frames);
        }
    }
    const auto energyOf = [](const std::vector<std::int16_t>& one, const std::vector<std::int16_t>& other) {
        double energy = 0;
        // A sample in eight tells enough.
        for (std::size_t index = 0; index < one.size(); index += 8) {
            const double difference = one[index] - other[index];
            energy += difference * difference;
        }
        return energy;
    };
    const std::vector<std::int16_t> silence(patterns[0].size());
    for (std::size_t one = 0; one < patterns.size(); ++one) {
        const double energy = energyOf(patterns[one], silence);
        QVERIFY(energy > 0);
        for (std::size_t other = 0; other < patterns.size(); ++other) {
            QVERIFY2(other == one || energyOf(patterns[one], patterns[other]) > energy / 4,
                     qPrintable(QString("%1 and %2").arg(one).arg(other)));
        }
    }
    // That is what is heard of the cameras, from their loops' beginning.
    StreamHub hub(options());
    for (const int number : {1, 2}) {
        const auto heard = hear(hub, listening("a", scene(number), Quality::Light), 32000);
        QVERIFY(
            std::equal(heard.begin() + 640, heard.end(), patterns[static_cast<std::size_t>(number)].begin() + 640));
    }
}

void tst_Sound::scenesRepeat() {
    // The pattern goes on over its own end, whichever quality is listened to.
    StreamHub hub(options());
    const auto light = hear(hub, listening("a", scene(2), Quality::Light), 16000 * 4);
    const auto main = hear(hub, listening("a", scene(2), Quality::Main), 16000 * 2);
    QCOMPARE(light.size(), std::size_t{16000 * 4});
    // A first frame swells, in whatever place.
    QVERIFY(std::equal(light.begin() + 640, light.begin() + 32000, light.begin() + 32640));
    QVERIFY(std::equal(main.begin() + 640, main.end(), light.begin() + 640));
}

void tst_Sound::scenesAreGentle() {
    StreamHub hub(options());
    const auto sound = hear(hub, listening("a", scene(5), Quality::Light), 16000 * 3);
    QVERIFY(!sound.empty());
    int last = 0;
    for (const std::int16_t sample : sound) {
        QVERIFY(std::abs(static_cast<int>(sample)) < 3500);
        // The steepest that a tone of this level and of the highest pitch can be.
        QVERIFY(std::abs(sample - last) < 2400);
        last = sample;
    }
}

void tst_Sound::listensToWhatRuns() {
    StreamHub hub(options());
    const auto viewer = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(watching("a", scene(1), Quality::Main), viewer);
    QVERIFY(viewer->waitForPictures(1));
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(listening("a", scene(1), Quality::Light), listener);
    QVERIFY(waitForSound(*listener, 640));
    QCOMPARE(listener->record().opened[0].width, 1280);
    // It goes on without the one whose stream it was.
    hub.unsubscribe(id);
    QVERIFY(waitForSound(*listener, listener->record().sound.size() + 6400));
    // A light stream that has no sound is not what a listener to the main one wants.
    const auto silent = std::make_shared<RecordingListener>();
    hub.subscribe(watching("b", file("silent.mp4"), Quality::Light), silent);
    QVERIFY(silent->waitForPictures(1));
    const auto other = std::make_shared<RecordingListener>();
    hub.subscribe(listening("b", file("aac.mp4"), Quality::Main), other);
    QVERIFY(waitForSound(*other, 1000));
}

QTEST_GUILESS_MAIN(tst_Sound)
#include "tst_Sound.moc"
