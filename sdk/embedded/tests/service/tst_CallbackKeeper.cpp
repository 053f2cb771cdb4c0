#include "TestSdk.h"
#include "api/CallbackKeeper.h"
#include "api/ClientChannel.h"

#include <QtTest>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace ipncsdk;
using namespace ipncsdk::test;
using api::CallbackKeeper;

/// Who waits for whom when callbacks are stopped.
class tst_CallbackKeeper final : public QObject {
    Q_OBJECT

private slots:
    void closedGateLetsNothingIn();
    void closingWaitsForAnotherThread();
    void closingFromInsideDoesNotWait();
    void callbacksThatStopEachOtherDoNotHang();
    void ringOfThreeDoesNotHang();
    void exceptionsStayInside();
    void shutWaitsForAll();
    void replacedClientCallbackNoLongerRuns();
    void clientCallbackMayReplaceItself();
};

void tst_CallbackKeeper::closedGateLetsNothingIn() {
    CallbackKeeper keeper;
    CallbackKeeper::Gate gate;
    bool ran = false;
    QVERIFY(keeper.run(gate, [&] { QVERIFY(keeper.isInside()); }));
    QVERIFY(!keeper.isInside());
    QVERIFY(keeper.close(gate));
    QVERIFY(!keeper.run(gate, [&] { ran = true; }));
    QVERIFY(!ran);
}

void tst_CallbackKeeper::closingWaitsForAnotherThread() {
    CallbackKeeper keeper;
    CallbackKeeper::Gate gate;
    std::atomic<bool> inside{false};
    std::atomic<bool> closing{false};
    bool finished = false; // not atomic: the close is what orders it
    std::thread other([&] {
        keeper.run(gate, [&] {
            inside = true;
            waitFor([&] { return closing.load(); });
            finished = true;
        });
    });
    QVERIFY(waitFor([&] { return inside.load(); }));
    closing = true;
    QVERIFY(keeper.close(gate));
    QVERIFY(finished);
    other.join();
}

void tst_CallbackKeeper::closingFromInsideDoesNotWait() {
    CallbackKeeper keeper;
    CallbackKeeper::Gate gate;
    bool closed = false;
    keeper.run(gate, [&] { closed = keeper.close(gate); });
    QVERIFY(closed);
    QVERIFY(!keeper.run(gate, [] {}));
}

void tst_CallbackKeeper::callbacksThatStopEachOtherDoNotHang() {
    for (int round = 0; round < 50; ++round) {
        CallbackKeeper keeper;
        CallbackKeeper::Gate gates[2];
        std::atomic<int> inside{0};
        std::atomic<int> refused{0};
        const auto closeOther = [&](int self) {
            keeper.run(gates[self], [&] {
                ++inside;
                waitFor([&] { return inside == 2; });
                if (!keeper.close(gates[1 - self]))
                    ++refused;
            });
        };
        std::thread one([&] { closeOther(0); });
        std::thread two([&] { closeOther(1); });
        one.join();
        two.join();
        QCOMPARE(refused.load(), 1); // the second one learns that waiting would never end
    }
}

void tst_CallbackKeeper::ringOfThreeDoesNotHang() {
    CallbackKeeper keeper;
    CallbackKeeper::Gate gates[3];
    std::atomic<int> inside{0};
    std::atomic<int> refused{0};
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (int self = 0; self < 3; ++self) {
        threads.emplace_back([&, self] {
            keeper.run(gates[self], [&] {
                ++inside;
                waitFor([&] { return inside == 3; });
                if (!keeper.close(gates[(self + 1) % 3]))
                    ++refused;
            });
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(refused.load(), 1);
}

void tst_CallbackKeeper::exceptionsStayInside() {
    CallbackKeeper keeper;
    CallbackKeeper::Gate gate;
    QVERIFY(keeper.run(gate, [] { throw std::runtime_error("from the client"); }));
    QVERIFY(keeper.run(gate, [] { throw 7; }));
    QVERIFY(keeper.close(gate)); // nobody counts as inside
}

void tst_CallbackKeeper::shutWaitsForAll() {
    CallbackKeeper keeper;
    std::atomic<int> inside{0};
    std::atomic<int> left{0};
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            CallbackKeeper::Gate gate;
            while (keeper.run(gate, [&] {
                ++inside;
                std::this_thread::yield();
                --inside;
            })) {
            }
            ++left;
        });
    }
    QVERIFY(waitFor([&] { return inside > 0; }));
    keeper.shut();
    QCOMPARE(inside.load(), 0);
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(left.load(), 4);
}

void tst_CallbackKeeper::replacedClientCallbackNoLongerRuns() {
    CallbackKeeper keeper;
    api::ClientChannel channel(keeper);
    std::atomic<bool> stop{false};
    std::vector<std::thread> senders;
    senders.reserve(6);
    for (int i = 0; i < 3; ++i) {
        senders.emplace_back([&] {
            while (!stop)
                channel.deliver("{}");
        });
    }
    for (int round = 0; round < 200; ++round) {
        auto alive = std::make_unique<std::atomic<int>>(0);
        channel.install([target = alive.get()](const std::string&, std::string& reply) {
            ++*target;
            reply = "seen";
        });
        QVERIFY(waitFor([&] { return *alive > 0; }));
        channel.install(nullptr);
        alive.reset(); // a callback that still ran would write into freed memory
    }
    stop = true;
    for (std::thread& sender : senders)
        sender.join();
    QCOMPARE(channel.deliver("{}"), std::string());
}

void tst_CallbackKeeper::clientCallbackMayReplaceItself() {
    CallbackKeeper keeper;
    api::ClientChannel channel(keeper);
    channel.install([&channel](const std::string&, std::string& reply) {
        channel.install([](const std::string&, std::string& second) { second = "second"; });
        reply = "first";
    });
    QCOMPARE(channel.deliver("{}"), std::string("first"));
    QCOMPARE(channel.deliver("{}"), std::string("second"));
}

QTEST_APPLESS_MAIN(tst_CallbackKeeper)
#include "tst_CallbackKeeper.moc"
