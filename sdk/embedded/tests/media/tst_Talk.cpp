#include "RecordingListener.h"
#include "Tone.h"
#include "media/StreamHub.h"
#include "media/sound/Talk.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

Subscription scene(const std::string& camera, Quality quality = Quality::Light) {
    return {camera, quality, LoopSource{"scene", 1, 0}, false, false, {}};
}

Subscription talking(const std::string& camera, std::shared_ptr<Talk> talk, Quality quality = Quality::Light) {
    Subscription subscription = scene(camera, quality);
    subscription.talk = std::move(talk);
    return subscription;
}

Subscription listening(const std::string& camera, Quality quality = Quality::Light) {
    Subscription subscription = scene(camera, quality);
    subscription.sound = true;
    return subscription;
}

bool isOpen(RecordingListener& listener) {
    return listener.waitFor([](const auto& record) { return !record.opened.empty(); });
}

} // namespace

/// What is said to cameras.
class tst_Talk : public QObject {
    Q_OBJECT

private slots:
    void isHeard_data();
    void isHeard();
    void heardOnTheOtherStream();
    void tonesComeBack();
    void oneAtATime();
    void oneAtATimeFromManyThreads();
    void tooMuch();
    void unfit();
    void takenAtOwnPlaces();
    void camerasWithoutEars();

private:
    /// Says a tone over and over, no faster than it is heard, until `enough`.
    static bool say(Talk& talk, const std::vector<std::int16_t>& samples, RecordingListener& ear,
                    const std::function<bool(const std::vector<std::int16_t>& heard)>& enough);
    HubOptions options();
    std::size_t linesWith(const std::string& words);

    QTemporaryDir folder_;
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

HubOptions tst_Talk::options() {
    HubOptions options;
    options.loopFolder = folder_.path().toStdString();
    options.log = [this](const std::string& line) {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    };
    return options;
}

std::size_t tst_Talk::linesWith(const std::string& words) {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(std::count_if(lines_.begin(), lines_.end(), [&](const std::string& line) {
        return line.find(words) != std::string::npos;
    }));
}

bool tst_Talk::say(Talk& talk, const std::vector<std::int16_t>& samples, RecordingListener& ear,
                   const std::function<bool(const std::vector<std::int16_t>& heard)>& enough) {
    for (int round = 0; round < 200; ++round) {
        if (!talk.push(samples.data(), samples.size() * 2)) {
            return false;
        }
        // As much as was said goes by.
        const std::size_t before = ear.record().sound.size();
        if (!ear.waitFor([&](const auto& record) { return record.sound.size() >= before + 1600; })) {
            return false;
        }
        if (enough(ear.record().sound)) {
            return true;
        }
    }
    return false;
}

void tst_Talk::isHeard_data() {
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    QTest::newRow("8 kHz") << 8000 << 1;
    QTest::newRow("16 kHz") << 16000 << 1;
    QTest::newRow("44.1 kHz, two channels") << 44100 << 2;
    QTest::newRow("48 kHz, two channels") << 48000 << 2;
}

void tst_Talk::isHeard() {
    QFETCH(int, rate);
    QFETCH(int, channels);
    StreamHub hub(options());
    const auto ear = std::make_shared<RecordingListener>();
    hub.subscribe(listening("a"), ear);
    const auto talk = std::make_shared<Talk>(rate, channels);
    const auto mouth = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(talking("a", talk), mouth);
    QVERIFY(isOpen(*mouth));
    QVERIFY(mouth->record().opened[0].talk);
    QVERIFY(isOpen(*ear));
    const auto words = tone(2000, rate, static_cast<std::size_t>(rate / 10), channels);
    QVERIFY(say(*talk, words, *ear, [](const std::vector<std::int16_t>& heard) {
        // A tenth of a second of nothing else.
        return heard.size() > 1600 && shareOf(2000, std::span(heard).last(1600), Talk::rate) > 0.9;
    }));
    QCOMPARE(mouth->record().sound.size(), std::size_t{0});
    hub.unsubscribe(id);
    QVERIFY(talk->hasEnded());
}

void tst_Talk::heardOnTheOtherStream() {
    StreamHub hub(options());
    // Both streams run before somebody listens, to each of them.
    Subscription light = scene("a");
    Subscription main = scene("a", Quality::Main);
    light.coded = light.sound = main.coded = main.sound = true;
    const auto lightEar = std::make_shared<RecordingListener>();
    const auto mainEar = std::make_shared<RecordingListener>();
    hub.subscribe(light, lightEar);
    hub.subscribe(main, mainEar);
    QVERIFY(isOpen(*lightEar) && isOpen(*mainEar));
    const auto talk = std::make_shared<Talk>(16000, 1);
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(talking("a", talk), mouth);
    QVERIFY(isOpen(*mouth));
    const auto words = tone(2000, 16000, 1600);
    std::atomic<bool> heardByMain{false};
    QVERIFY(say(*talk, words, *lightEar, [&](const std::vector<std::int16_t>& heard) {
        const auto other = mainEar->record().sound;
        heardByMain =
            heardByMain || (other.size() > 1600 && shareOf(2000, std::span(other).last(1600), Talk::rate) > 0.9);
        return heardByMain && shareOf(2000, std::span(heard).last(1600), Talk::rate) > 0.9;
    }));
}

void tst_Talk::tonesComeBack() {
    StreamHub hub(options());
    const auto ear = std::make_shared<RecordingListener>();
    hub.subscribe(listening("a"), ear);
    QVERIFY(isOpen(*ear));
    const auto talk = std::make_shared<Talk>(16000, 1);
    const auto mouth = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(talking("a", talk), mouth);
    QVERIFY(isOpen(*mouth));
    const auto sizeNow = [&] {
        return ear->record().sound.size();
    };
    const auto loudestSince = [&](std::size_t begin) {
        const auto sound = ear->record().sound;
        int peak = 0;
        for (std::size_t index = begin; index < sound.size(); ++index) {
            peak = std::max(peak, std::abs(static_cast<int>(sound[index])));
        }
        return peak;
    };
    const auto passes = [&](std::size_t samples) {
        const std::size_t end = sizeNow() + samples;
        return ear->waitFor([end](const auto& record) { return record.sound.size() >= end; });
    };
    // The way is open and nothing is said: silence, longer than any pause of the pattern.
    QVERIFY(passes(1280));
    const std::size_t silence = sizeNow();
    QVERIFY(passes(32000));
    QCOMPARE(loudestSince(silence), 0);
    hub.unsubscribe(id);
    QVERIFY(passes(32000));
    QVERIFY(loudestSince(sizeNow() - 32000) > 1000);
}

void tst_Talk::oneAtATime() {
    StreamHub hub(options());
    const auto first = std::make_shared<Talk>(8000, 1);
    const auto firstMouth = std::make_shared<RecordingListener>();
    const auto firstId = hub.subscribe(talking("a", first), firstMouth);
    QVERIFY(isOpen(*firstMouth));
    // The other stream of the same camera is the same camera.
    for (const Quality quality : {Quality::Light, Quality::Main}) {
        const auto second = std::make_shared<Talk>(8000, 1);
        const auto secondMouth = std::make_shared<RecordingListener>();
        hub.subscribe(talking("a", second, quality), secondMouth);
        QCOMPARE(secondMouth->waitForClose(), std::optional(StreamError::TalkBusy));
        QVERIFY(secondMouth->record().opened.empty());
        const std::vector<std::int16_t> words(80);
        QVERIFY(!second->push(words.data(), 160));
        QVERIFY(first->push(words.data(), 160));
    }
    // Another camera is free, and this one is as soon as the first has ended.
    const auto elsewhere = std::make_shared<RecordingListener>();
    hub.subscribe(talking("b", std::make_shared<Talk>(8000, 1)), elsewhere);
    QVERIFY(isOpen(*elsewhere));
    hub.unsubscribe(firstId);
    const auto third = std::make_shared<RecordingListener>();
    hub.subscribe(talking("a", std::make_shared<Talk>(8000, 1)), third);
    QVERIFY(isOpen(*third));
}

void tst_Talk::oneAtATimeFromManyThreads() {
    StreamHub hub(options());
    const auto witness = std::make_shared<RecordingListener>();
    hub.subscribe(listening("a"), witness);
    QVERIFY(isOpen(*witness));
    std::atomic<int> open{0};
    std::atomic<int> most{0};
    std::atomic<int> talked{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            const auto words = tone(500, 8000, 400);
            for (int round = 0; round < 12; ++round) {
                const auto talk = std::make_shared<Talk>(8000, 1);
                const auto mouth = std::make_shared<RecordingListener>();
                const auto id =
                    hub.subscribe(talking("a", talk, thread % 2 == 0 ? Quality::Light : Quality::Main), mouth);
                mouth->waitFor([](const auto& record) { return record.closed || !record.opened.empty(); });
                if (talk->push(words.data(), 800)) {
                    most = std::max(most.load(), ++open);
                    ++talked;
                    const std::size_t before = witness->record().sound.size();
                    witness->waitFor([&](const auto& record) { return record.sound.size() > before; });
                    --open;
                }
                hub.unsubscribe(id);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(most.load(), 1);
    QVERIFY(talked > 0);
}

void tst_Talk::tooMuch() {
    StreamHub hub(options());
    const auto ear = std::make_shared<RecordingListener>();
    hub.subscribe(listening("a"), ear);
    QVERIFY(isOpen(*ear));
    const auto talk = std::make_shared<Talk>(16000, 1);
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(talking("a", talk), mouth);
    QVERIFY(isOpen(*mouth));
    const auto old = tone(1000, 16000, 16000);
    const auto recent = tone(2000, 16000, 16000);
    QVERIFY(say(*talk, tone(500, 16000, 1600), *ear, [](const std::vector<std::int16_t>& heard) {
        return heard.size() > 1600 && shareOf(500, std::span(heard).last(800), 16000) > 0.9;
    }));
    // As fast as it goes: of many seconds only the last one can be heard, after what was already on its way.
    for (int second = 0; second < 20; ++second) {
        QVERIFY(talk->push(old.data(), old.size() * 2));
    }
    for (int second = 0; second < 3; ++second) {
        QVERIFY(talk->push(recent.data(), recent.size() * 2));
    }
    QTRY_COMPARE_WITH_TIMEOUT(linesWith("the oldest is left out"), std::size_t{1}, 60000);
    const std::size_t begin = ear->record().sound.size();
    QVERIFY(ear->waitFor([&](const auto& record) { return record.sound.size() >= begin + 8000; }));
    const auto heard = ear->record().sound;
    QVERIFY(shareOf(2000, std::span(heard).subspan(begin, 8000), 16000) > 0.9);
    for (int second = 0; second < 3; ++second) {
        QVERIFY(talk->push(old.data(), old.size() * 2));
    }
    QVERIFY(ear->waitFor([&](const auto& record) { return record.sound.size() >= begin + 16000; }));
    QCOMPARE(linesWith("the oldest is left out"), std::size_t{1});
}

void tst_Talk::unfit() {
    Talk talk(16000, 2);
    const std::vector<std::int16_t> words(64004);
    QCOMPARE(talk.secondOfBytes(), std::size_t{64000});
    QVERIFY(!talk.push(words.data(), 400)); // not open yet
    QVERIFY(talk.open());
    QVERIFY(talk.push(words.data(), 400));
    QVERIFY(talk.push(reinterpret_cast<const char*>(words.data()) + 1, 400)); // at any address
    QVERIFY(talk.push(words.data(), 64000));
    QVERIFY(!talk.push(words.data(), 0));
    QVERIFY(!talk.push(words.data(), 2)); // half a pair
    QVERIFY(!talk.push(words.data(), 401));
    QVERIFY(!talk.push(words.data(), 64004));
    talk.end();
    QVERIFY(!talk.push(words.data(), 400));
    QVERIFY(!talk.open());
}

void tst_Talk::takenAtOwnPlaces() {
    Talk talk(Talk::rate, 1);
    QVERIFY(talk.open());
    std::vector<std::int16_t> words(Talk::kept);
    for (std::size_t index = 0; index < words.size(); ++index) {
        words[index] = static_cast<std::int16_t>(index);
    }
    QVERIFY(talk.push(words.data(), 2000));
    Talk::Place early;
    Talk::Place late = talk.placeBefore(200);
    QCOMPARE(talk.waiting(early), std::size_t{1000});
    QCOMPARE(talk.waiting(late), std::size_t{200});
    QCOMPARE(talk.waiting(talk.placeBefore(5000)), std::size_t{1000});
    std::vector<std::int16_t> taken(600);
    bool lost = true;
    QCOMPARE(talk.take(early, taken, lost), std::size_t{600});
    QVERIFY(!lost && taken[0] == 0 && taken[599] == 599);
    QCOMPARE(talk.take(late, taken, lost), std::size_t{200});
    QVERIFY(!lost && taken[0] == 800 && taken[199] == 999);
    QCOMPARE(talk.take(late, taken, lost), std::size_t{0});
    // More than is kept comes before the one that is behind looks again.
    QVERIFY(talk.push(words.data(), words.size() * 2));
    QCOMPARE(talk.take(late, taken, lost), std::size_t{600});
    QVERIFY(!lost && taken[0] == 0);
    QCOMPARE(talk.take(early, taken, lost), std::size_t{600});
    QVERIFY(lost && taken[0] == 0);
    QCOMPARE(talk.take(early, taken, lost), std::size_t{600});
    QVERIFY(!lost && taken[0] == 600);
}

void tst_Talk::camerasWithoutEars() {
    const QString film = folder_.filePath("film.mp4");
    QCOMPARE(QProcess::execute("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "testsrc=size=320x240:duration=1",
                                          "-c:v", "libx264", "-pix_fmt", "yuv420p", film}),
             0);
    StreamHub hub(options());
    Subscription subscription = talking("film", std::make_shared<Talk>(8000, 1));
    subscription.source = FileSource{film.toStdString()};
    const auto mouth = std::make_shared<RecordingListener>();
    hub.subscribe(subscription, mouth);
    QCOMPARE(mouth->waitForClose(), std::optional(StreamError::NoTalk));
    QVERIFY(subscription.talk->hasEnded() || !subscription.talk->push("xx", 2));
}

QTEST_GUILESS_MAIN(tst_Talk)
#include "tst_Talk.moc"
