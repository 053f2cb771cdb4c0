#include "base/CallbackGate.h"

#include <QtTest>

#include <thread>

class tst_CallbackGate final : public QObject {
    Q_OBJECT
private slots:
    void nobodyIsInsideAfterClosing();
    void closedStaysClosed();
};

// What the gate is for: the object that callbacks use may go as soon as `close` has returned.
void tst_CallbackGate::nobodyIsInsideAfterClosing() {
    for (int round = 0; round < 200; ++round) {
        auto gate = std::make_shared<CallbackGate>();
        auto guarded = std::make_unique<int>(0); // not atomic: every unguarded access is a race that a checker sees
        std::atomic<int> calls{0};
        std::atomic<bool> stop{false};
        std::mutex order;
        std::vector<std::thread> threads;
        for (int n = 0; n < 3; ++n) {
            threads.emplace_back([&, gate] {
                while (!stop) {
                    const CallbackGate::Passage passage(*gate);
                    if (!passage)
                        continue;
                    const std::lock_guard lock(order);
                    ++*guarded;
                    ++calls;
                }
            });
        }
        while (calls < 20)
            std::this_thread::yield();
        gate->close();
        const int before = calls;
        guarded.reset();
        QCOMPARE(calls.load(), before);
        stop = true;
        for (std::thread& thread : threads)
            thread.join();
    }
}

void tst_CallbackGate::closedStaysClosed() {
    CallbackGate gate;
    { QVERIFY(bool(CallbackGate::Passage(gate))); }
    gate.close();
    gate.close();
    QVERIFY(!bool(CallbackGate::Passage(gate)));
}

QTEST_GUILESS_MAIN(tst_CallbackGate)
#include "tst_CallbackGate.moc"
