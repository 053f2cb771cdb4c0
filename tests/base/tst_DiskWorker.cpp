#include "base/DiskWorker.h"

#include <QtTest>

#include <atomic>
#include <future>

using corvanta::DiskWorker;
using namespace std::chrono_literals;

class tst_DiskWorker final : public QObject {
    Q_OBJECT
private slots:
    void theNewestTakesThePlaceOfWhatWaits();
    void whatWaitsIsDoneAtTheEnd();
    void whatIsDueFirstIsDoneFirst();
    void postedByManyThreads();
};

void tst_DiskWorker::theNewestTakesThePlaceOfWhatWaits() {
    DiskWorker worker;
    std::promise<void> disk; // a slow one
    std::vector<int> done;
    std::promise<void> begun;
    worker.post("a", {}, [&] {
        begun.set_value();
        disk.get_future().wait();
        done.push_back(1);
    });
    begun.get_future().wait();
    for (int i = 2; i < 100; ++i) // nobody waits
        worker.post("a", {}, [&done, i] { done.push_back(i); });
    disk.set_value();
    worker.finish();
    QCOMPARE(done, (std::vector<int>{1, 99}));
}

void tst_DiskWorker::whatWaitsIsDoneAtTheEnd() {
    bool isDone = false;
    {
        DiskWorker worker;
        worker.post("later", 1h, [&isDone] { isDone = true; });
    }
    QVERIFY(isDone);
    isDone = false;
    DiskWorker worker;
    worker.finish(); // nothing to wait for
    worker.post("later", 1h, [&isDone] { isDone = true; });
    worker.finish();
    QVERIFY(isDone);
}

void tst_DiskWorker::whatIsDueFirstIsDoneFirst() {
    DiskWorker worker;
    std::vector<int> done;
    worker.post("a", 1h, [&] { done.push_back(3); });
    worker.post("b", 50ms, [&] { done.push_back(1); });
    worker.post("c", 100ms, [&] { done.push_back(2); });
    worker.post("b", 1h, [&] { done.push_back(10); }); // another task at the time of the first
    worker.finish();
    QCOMPARE(done, (std::vector<int>{10, 2, 3}));
}

void tst_DiskWorker::postedByManyThreads() {
    constexpr int each = 500;
    std::atomic<int> done{0};
    {
        DiskWorker worker;
        std::vector<std::thread> threads;
        for (int number = 0; number < 4; ++number) {
            threads.emplace_back([&worker, &done, number] {
                for (int i = 0; i < each; ++i)
                    worker.post(std::to_string(number) + '-' + std::to_string(i), {}, [&done] { ++done; });
                worker.finish();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
    QCOMPARE(done.load(), 4 * each);
}

QTEST_GUILESS_MAIN(tst_DiskWorker)
#include "tst_DiskWorker.moc"
