#include "RecordingListener.h"
#include "media/StreamHub.h"

#include <QtTest>

#include <atomic>
#include <random>
#include <thread>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

Subscription loopSubscription(const std::string& camera, bool decoded, bool coded, Quality quality = Quality::Light) {
    return {camera, quality, LoopSource{camera, static_cast<int>(camera.size()), 0}, decoded, coded, {}};
}

} // namespace

class tst_StreamHub : public QObject {
    Q_OBJECT

private slots:
    void reportsInOrder();
    void sharesOneReader();
    void joinsAtKeyFrame();
    void decodesOnlyWhileWanted();
    void unsubscribesInsideCallback();
    void unsubscribeWaitsForCallback();
    void subscribesInsideCallback();
    void manyThreads();
    void destructorWithRunningStreams();
    void openTimeoutOfOneSubscriber();
    void snapshots();
    void snapshotOfCodedStream();
    void previews();
    void stopEndsWaiters();

private:
    /// One folder for all tests, so that each loop is made once.
    QTemporaryDir folder_;
    HubOptions options() const { return {folder_.path().toStdString(), {}, {}}; }
};

void tst_StreamHub::reportsInOrder() {
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(loopSubscription("a", true, true), listener);
    QVERIFY(id > 0);
    QVERIFY(listener->waitForPictures(30));
    hub.unsubscribe(id);
    const auto record = listener->record();
    QCOMPARE(record.stages.front(), OpenStage::Information);
    QCOMPARE(record.stages.back(), OpenStage::Loading);
    QCOMPARE(record.opened.size(), std::size_t{1});
    QCOMPARE(record.opened[0].width, 640);
    QCOMPARE(record.opened[0].height, 360);
    QCOMPARE(record.opened[0].frameRate, 25);
    QCOMPARE(record.opened[0].connectionType, std::string("LOOP"));
    QVERIFY(record.coded[0].keyFrame);
    QVERIFY(!record.closed);
    QCOMPARE(record.newest.samples.size(), i420Size(640, 360));
    QCOMPARE(listener.use_count(), 1L);
}

void tst_StreamHub::sharesOneReader() {
    StreamHub hub(options());
    const auto first = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("a", true, false), first);
    QVERIFY(first->waitForPictures(7));
    const auto same = std::make_shared<RecordingListener>();
    const auto otherCamera = std::make_shared<RecordingListener>();
    const auto otherQuality = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("a", false, true), same);
    hub.subscribe(loopSubscription("b", false, true), otherCamera);
    hub.subscribe(loopSubscription("a", false, true, Quality::Main), otherQuality);
    for (const auto& listener : {same, otherCamera, otherQuality}) {
        QVERIFY(listener->waitForCoded(1));
    }
    // A reader of one's own begins at time 0; one that was running goes on.
    QVERIFY(same->record().coded[0].time > 0us);
    QCOMPARE(otherCamera->record().coded[0].time, 0us);
    QCOMPARE(otherQuality->record().coded[0].time, 0us);
}

void tst_StreamHub::joinsAtKeyFrame() {
    StreamHub hub(options());
    const auto first = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("a", true, false), first);
    QVERIFY(first->waitForPictures(7));
    const auto coded = std::make_shared<RecordingListener>();
    const auto decoded = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("a", false, true), coded);
    hub.subscribe(loopSubscription("a", true, false), decoded);
    QVERIFY(coded->waitForCoded(30));
    QVERIFY(decoded->waitForPictures(1));
    const auto record = coded->record();
    QVERIFY(record.stages.empty());
    QCOMPARE(record.opened.size(), std::size_t{1});
    QVERIFY(record.coded[0].keyFrame);
    QVERIFY(record.coded[25].keyFrame);
}

void tst_StreamHub::decodesOnlyWhileWanted() {
    StreamHub hub(options());
    const auto coded = std::make_shared<RecordingListener>();
    const auto codedId = hub.subscribe(loopSubscription("a", false, true), coded);
    QVERIFY(coded->waitForCoded(3));
    // A second one wants pictures for a while; they begin with a key frame.
    const auto decoded = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(loopSubscription("a", true, false), decoded);
    QVERIFY(decoded->waitForPictures(3));
    hub.unsubscribe(id);
    const int count = decoded->record().decoded;
    QVERIFY(coded->waitForCoded(coded->record().coded.size() + 5));
    QCOMPARE(decoded->record().decoded, count);
    QCOMPARE(coded->record().decoded, 0);
    hub.unsubscribe(codedId);
}

void tst_StreamHub::unsubscribesInsideCallback() {
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    std::atomic<int> calls{0};
    std::atomic<int> id{0};
    std::atomic<bool> gone{false};
    listener->onAnything = [&] {
        if (++calls == 6) {
            while (id == 0) {
                std::this_thread::yield();
            }
            hub.unsubscribe(id);
            gone = true;
        }
    };
    const auto witness = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("a", true, false), witness);
    id = hub.subscribe(loopSubscription("a", true, true), listener);
    QTRY_VERIFY_WITH_TIMEOUT(gone.load(), 60000);
    QVERIFY(witness->waitForPictures(witness->record().decoded + 10));
    QCOMPARE(calls.load(), 6);
    // The last subscriber of a stream may do the same.
    const auto last = std::make_shared<RecordingListener>();
    std::atomic<int> lastId{0};
    std::atomic<int> lastCalls{0};
    last->onAnything = [&] {
        while (lastId == 0) {
            std::this_thread::yield();
        }
        ++lastCalls;
        hub.unsubscribe(lastId);
    };
    lastId = hub.subscribe(loopSubscription("alone", false, true), last);
    QTRY_COMPARE_WITH_TIMEOUT(lastCalls.load(), 1, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(last.use_count(), 1L, 60000);
}

void tst_StreamHub::unsubscribeWaitsForCallback() {
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    std::atomic<bool> inside{false};
    std::atomic<bool> release{false};
    std::atomic<bool> left{false};
    listener->onAnything = [&] {
        inside = true;
        while (!release) {
            std::this_thread::yield();
        }
        left = true;
    };
    const auto id = hub.subscribe(loopSubscription("a", false, true), listener);
    QTRY_VERIFY(inside.load());
    std::atomic<bool> leftBefore{false};
    std::thread unsubscriber([&] {
        hub.unsubscribe(id);
        leftBefore = left.load();
    });
    std::thread([&] { release = true; }).join();
    unsubscriber.join();
    QVERIFY(leftBefore);
    QCOMPARE(listener.use_count(), 1L);
}

void tst_StreamHub::subscribesInsideCallback() {
    StreamHub hub(options());
    const auto inner = std::make_shared<RecordingListener>();
    const auto outer = std::make_shared<RecordingListener>();
    std::atomic<bool> done{false};
    outer->onAnything = [&] {
        if (!done.exchange(true)) {
            hub.subscribe(loopSubscription("a", true, false), inner);
            hub.subscribe(loopSubscription("b", true, false), inner);
        }
    };
    hub.subscribe(loopSubscription("a", true, false), outer);
    QVERIFY(inner->waitForPictures(5));
}

void tst_StreamHub::manyThreads() {
    StreamHub hub(options());
    std::vector<std::thread> threads;
    std::atomic<int> pictures{0};
    std::atomic<int> late{0};
    for (unsigned thread = 0; thread < 6; ++thread) {
        threads.emplace_back([&, thread] {
            std::mt19937 random(thread);
            for (int round = 0; round < 25; ++round) {
                const auto listener = std::make_shared<RecordingListener>();
                const std::string camera(1 + random() % 3, 'm');
                const auto id = hub.subscribe(loopSubscription(camera, random() % 2 == 0, true), listener);
                if (random() % 3 == 0) {
                    listener->waitForCoded(2);
                }
                if (random() % 4 == 0) {
                    std::vector<std::uint8_t> jpeg;
                    hub.preview(loopSubscription(camera, false, false), 100, 50ms, jpeg);
                }
                hub.unsubscribe(id);
                const auto count = listener->record().coded.size();
                pictures += static_cast<int>(count);
                std::this_thread::yield();
                late += static_cast<int>(listener->record().coded.size() - count);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QVERIFY(pictures > 0);
    QCOMPARE(late.load(), 0);
}

void tst_StreamHub::destructorWithRunningStreams() {
    std::vector<std::shared_ptr<RecordingListener>> listeners;
    {
        StreamHub hub(options());
        for (int camera = 0; camera < 12; ++camera) {
            listeners.push_back(std::make_shared<RecordingListener>());
            const auto quality = camera % 4 == 0 ? Quality::Main : Quality::Light;
            const std::string name = "d" + std::to_string(camera % 10);
            hub.subscribe(loopSubscription(name, true, true, quality), listeners.back());
        }
        QVERIFY(listeners.back()->waitForPictures(3));
    }
    for (const auto& listener : listeners) {
        QVERIFY(!listener->record().closed);
        QCOMPARE(listener.use_count(), 1L);
    }
}

void tst_StreamHub::openTimeoutOfOneSubscriber() {
    // So many loops are wanted at once that the last one's turn does not come within its time.
    const QTemporaryDir fresh;
    StreamHub hub({fresh.path().toStdString(), {}, {}});
    std::vector<std::shared_ptr<RecordingListener>> listeners;
    for (int camera = 0; camera < 8; ++camera) {
        listeners.push_back(std::make_shared<RecordingListener>());
        hub.subscribe(loopSubscription("busy" + std::to_string(camera), false, true, Quality::Main),
                      listeners.back());
    }
    const auto patient = std::make_shared<RecordingListener>();
    const auto hasty = std::make_shared<RecordingListener>();
    Subscription subscription = loopSubscription("last", false, true, Quality::Main);
    hub.subscribe(subscription, patient);
    subscription.openTimeout = 1ms;
    hub.subscribe(subscription, hasty);
    QCOMPARE(hasty->waitForClose(), std::optional(StreamError::TimedOut));
    QVERIFY(!patient->record().closed);
    QTRY_COMPARE_WITH_TIMEOUT(hasty.use_count(), 1L, 60000);
}

void tst_StreamHub::snapshots() {
    StreamHub hub(options());
    const QTemporaryDir target;
    const std::filesystem::path file = target.filePath("图片.jpg").toStdString();
    QCOMPARE(hub.snapshot(4711, file), StreamError::BadRequest);
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(loopSubscription("a", true, false, Quality::Main), listener);
    QVERIFY(listener->waitForPictures(1));
    QCOMPARE(hub.snapshot(id, file), StreamError::None);
    QCOMPARE(QImage(target.filePath("图片.jpg")).size(), QSize(1280, 720));
    QCOMPARE(hub.snapshot(id, target.filePath("none/x.jpg").toStdString()), StreamError::FileNotWritten);
    QCOMPARE(QDir(target.path()).entryList(QDir::Files).size(), 1);
}

void tst_StreamHub::snapshotOfCodedStream() {
    StreamHub hub(options());
    const QTemporaryDir target;
    const auto listener = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe(loopSubscription("a", false, true), listener);
    QVERIFY(listener->waitForCoded(2));
    QCOMPARE(hub.snapshot(id, target.filePath("x.jpg").toStdString()), StreamError::None);
    QCOMPARE(QImage(target.filePath("x.jpg")).size(), QSize(640, 360));
    QCOMPARE(listener->record().decoded, 0);
}

void tst_StreamHub::previews() {
    StreamHub hub(options());
    std::vector<std::uint8_t> jpeg;
    const auto sizeOf = [&] {
        return QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size())).size();
    };
    // Nobody watches: the light stream is opened for it and closed again.
    QCOMPARE(hub.preview(loopSubscription("p", false, false, Quality::Main), 200, 60s, jpeg), StreamError::None);
    QCOMPARE(sizeOf(), QSize(200, 112));
    // The main stream runs: its picture is larger than the light one would be.
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(loopSubscription("p", true, false, Quality::Main), listener);
    QVERIFY(listener->waitForPictures(1));
    QCOMPARE(hub.preview(loopSubscription("p", false, false), 1280, 60s, jpeg), StreamError::None);
    QCOMPARE(sizeOf(), QSize(1280, 720));
    const Subscription nowhere{"n", Quality::Light, RtspSource{"file:///etc/passwd", "", ""}, false, false, {}};
    QCOMPARE(hub.preview(nowhere, 200, 60s, jpeg), StreamError::AddressUnreachable);
    QVERIFY(jpeg.empty());
}

void tst_StreamHub::stopEndsWaiters() {
    const QTemporaryDir fresh;
    StreamHub hub({fresh.path().toStdString(), {}, {}});
    for (int camera = 0; camera < 6; ++camera) {
        hub.subscribe(loopSubscription("busy" + std::to_string(camera), false, true, Quality::Main),
                      std::make_shared<RecordingListener>());
    }
    std::atomic<bool> back{false};
    std::thread waiter([&] {
        std::vector<std::uint8_t> jpeg;
        hub.preview(loopSubscription("waiting", false, false), 100, 1h, jpeg);
        back = true;
    });
    hub.stop();
    waiter.join();
    QVERIFY(back);
    QCOMPARE(hub.subscribe(loopSubscription("late", true, true), std::make_shared<RecordingListener>()), 0);
    hub.unsubscribe(1);
}

QTEST_GUILESS_MAIN(tst_StreamHub)
#include "tst_StreamHub.moc"
