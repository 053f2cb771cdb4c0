#include "Viewer.h"

#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// How streams and requests are ended: by the client, from callbacks and from many threads, by signing out and by the
/// end of the SDK. Nothing is called when the end has returned.
class tst_VideoEnds final : public QObject {
    Q_OBJECT

private slots:
    void stopInsideItsOwnCallback();
    void streamsStopEachOtherFromCallbacks();
    void stopWaitsForARunningCallback();
    void openedAndStoppedFromManyThreads();
    void cleanupWithStreamsRunning();
    void cleanupBreaksOffPreviews();
    void cleanupInsideACallbackIsRefused();
    void startAndCleanUpFromManyThreads();
    void signOutClosesStreams();
};

void tst_VideoEnds::stopInsideItsOwnCallback() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::atomic<int> afterStop{0};
    std::atomic<bool> stopped{false};
    auto id = std::make_shared<int>(0);
    sdk.runtime.requestMessage(toText(openMessage("CAM0001")), *id, [&, id](const std::string& text) {
        if (stopped) {
            ++afterStop;
        } else if (text.find("decodevideodata") != std::string::npos) {
            sdk.runtime.stopRequest(*id);
            stopped = true;
        }
    });
    QVERIFY(waitFor([&] { return stopped && sdk.hub->running == 0; }));
    QCOMPARE(afterStop.load(), 0);
}

void tst_VideoEnds::streamsStopEachOtherFromCallbacks() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    for (int round = 0; round < 20; ++round) {
        std::atomic<int> ids[2] = {0, 0};
        std::atomic<int> inside{0};
        std::atomic<int> done{0};
        for (int self = 0; self < 2; ++self) {
            int id = 0;
            auto once = std::make_shared<std::atomic<bool>>(false);
            sdk.runtime.requestMessage(toText(openMessage("CAM000" + std::to_string(self + 1))), id,
                                       [&, self, once](const std::string& text) {
                                           if (text.find("decodevideodata") == std::string::npos ||
                                               once->exchange(true))
                                               return;
                                           ++inside;
                                           waitFor([&] { return inside == 2 && ids[1 - self] > 0; });
                                           sdk.runtime.stopRequest(ids[1 - self]);
                                           ++done;
                                       });
            ids[self] = id;
        }
        QVERIFY(waitFor([&] { return done == 2 && sdk.hub->running == 0; }));
    }
}

void tst_VideoEnds::stopWaitsForARunningCallback() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    for (int round = 0; round < 50; ++round) {
        auto buffer = std::make_unique<std::vector<char>>(1000);
        std::atomic<bool> running{false};
        int id = 0;
        sdk.runtime.requestMessage(toText(openMessage("CAM0001")), id, [&](const std::string&) {
            running = true;
            for (char& c : *buffer)
                ++c;
        });
        QVERIFY(waitFor([&] { return running.load(); }));
        sdk.runtime.stopRequest(id);
        buffer.reset(); // a callback that still ran would write into freed memory
    }
}

void tst_VideoEnds::openedAndStoppedFromManyThreads() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (int t = 0; t < 6; ++t) {
        threads.emplace_back([&, t] {
            for (int n = 0; n < 40; ++n) {
                std::atomic<int> frames{0};
                std::atomic<bool> stopped{false};
                int id = 0;
                sdk.runtime.requestMessage(toText(openMessage("CAM000" + std::to_string(1 + (t + n) % 9))), id,
                                           [&](const std::string&) {
                                               if (stopped)
                                                   std::abort();
                                               ++frames;
                                           });
                // Some are stopped before they open, some while frames come.
                if (n % 3 != 0)
                    waitFor([&] { return frames > n % 7; });
                sdk.runtime.stopRequest(id);
                stopped = true;
                std::string out;
                if (n % 5 == 0)
                    sdk.runtime.getConfig(R"({"type":"ipnclist"})", out);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    sdk.settle();
    QVERIFY(waitFor([&] { return sdk.hub->running == 0; }));
}

void tst_VideoEnds::cleanupWithStreamsRunning() {
    TestSdk sdk;
    for (int round = 0; round < 5; ++round) {
        QCOMPARE(sdk.start(), emSuccess);
        QVERIFY(sdk.signIn());
        auto frames = std::make_unique<std::atomic<int>>(0);
        for (int i = 1; i <= 9; ++i) {
            int id = 0;
            sdk.runtime.requestMessage(toText(openMessage("CAM000" + std::to_string(i))), id,
                                       [target = frames.get()](const std::string&) { ++*target; });
        }
        QVERIFY(waitFor([&] { return *frames > 50; }));
        // Requests of every kind are under way, too.
        for (int i = 0; i < 20; ++i) {
            int id = 0;
            sdk.runtime.requestMessage(R"({"reqtype":"preview","ipncid":"CAM0001"})", id,
                                       [target = frames.get()](const std::string&) { ++*target; });
        }
        QCOMPARE(sdk.runtime.cleanup(), emSuccess);
        frames.reset(); // a callback that still ran would write into freed memory
        QCOMPARE(sdk.hub->running.load(), 0);
    }
}

void tst_VideoEnds::cleanupBreaksOffPreviews() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.hub->stall = true;
    std::atomic<int> called{0};
    for (int i = 0; i < 5; ++i) {
        int id = 0;
        sdk.runtime.requestMessage(R"({"reqtype":"preview","ipncid":"CAM0001"})", id,
                                   [&](const std::string&) { ++called; });
    }
    QVERIFY(waitFor([&] { return sdk.hub->stalled == 2; }));
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(called.load(), 0);
}

void tst_VideoEnds::cleanupInsideACallbackIsRefused() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    std::promise<std::pair<int, int>> results;
    sdk.runtime.setConfig(R"({"type":"try"})", [&](const std::string&) {
        const int cleanup = sdk.runtime.cleanup();
        results.set_value({cleanup, sdk.runtime.startup()});
    });
    const auto [cleanup, startup] = results.get_future().get();
    QCOMPARE(cleanup, static_cast<int>(emWrongThread));
    QCOMPARE(startup, static_cast<int>(emAlreadyStarted));
    QVERIFY(sdk.signIn());
}

void tst_VideoEnds::startAndCleanUpFromManyThreads() {
    TestSdk sdk;
    std::vector<std::thread> threads;
    threads.reserve(6);
    std::atomic<int> starts{0};
    std::atomic<int> cleanups{0};
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int n = 0; n < 10; ++n) {
                if (sdk.runtime.startup() == emSuccess)
                    ++starts;
                int id = 0;
                sdk.runtime.requestMessage(R"({"reqtype":"urlreq"})", id, [](const std::string&) {});
                sdk.runtime.setConfig(R"({"type":"freshlocal"})", nullptr);
                sdk.runtime.setClientCallback([](const std::string&, std::string&) {});
                sdk.runtime.stopRequest(id);
                if (sdk.runtime.cleanup() == emSuccess)
                    ++cleanups;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(starts > 0);
    QVERIFY(cleanups >= starts);
}

void tst_VideoEnds::signOutClosesStreams() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewers[] = {Viewer(sdk), Viewer(sdk), Viewer(sdk)};
    for (int i = 0; i < 3; ++i)
        viewers[i].open("CAM000" + std::to_string(i + 1));
    for (Viewer& viewer : viewers)
        QVERIFY(viewer.waitForFrames(1));
    QCOMPARE(sdk.command({{"type", "logout"}}).at("retcode"), Json(0));
    for (Viewer& viewer : viewers) {
        const auto closed = viewer.messages.ofType("avclose");
        QCOMPARE(closed.size(), std::size_t{1});
        QCOMPARE(closed.front().at("retcode"), Json(4));
    }
    QVERIFY(waitFor([&] { return sdk.hub->running == 0; }));
}

QTEST_APPLESS_MAIN(tst_VideoEnds)
#include "tst_VideoEnds.moc"
