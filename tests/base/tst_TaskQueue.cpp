#include "base/TaskQueue.h"

#include <QtTest>

#include <thread>

class tst_TaskQueue final : public QObject {
    Q_OBJECT
private slots:
    void everyTaskRunsOnceInItsThreadsOrder();
    void causeComesBeforeEffect();
    void tasksPostedByTasksRun();
    void unrunTasksAreDropped();
};

void tst_TaskQueue::everyTaskRunsOnceInItsThreadsOrder() {
    constexpr int Threads = 4;
    constexpr int Tasks = 5000;
    TaskQueue queue;
    std::vector<std::vector<int>> seen(Threads);
    std::vector<std::thread> threads;
    for (int t = 0; t < Threads; ++t) {
        threads.emplace_back([&queue, &seen, t] {
            for (int n = 0; n < Tasks; ++n)
                queue.post([&seen, t, n] { seen[static_cast<std::size_t>(t)].push_back(n); });
        });
    }
    QTRY_VERIFY(std::all_of(seen.begin(), seen.end(), [](const auto& list) { return list.size() == Tasks; }));
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& list : seen)
        QVERIFY(std::is_sorted(list.begin(), list.end()));
}

// A connection is announced on one thread and its end on another: the end must not overtake.
void tst_TaskQueue::causeComesBeforeEffect() {
    TaskQueue queue;
    for (int round = 0; round < 500; ++round) {
        std::atomic<bool> posted{false};
        std::vector<int> order;
        std::thread first([&] {
            queue.post([&order] { order.push_back(1); });
            posted = true;
        });
        std::thread second([&] {
            while (!posted)
                std::this_thread::yield();
            queue.post([&order] { order.push_back(2); });
        });
        first.join();
        second.join();
        queue.drain();
        QCOMPARE(order, (std::vector<int>{1, 2}));
    }
}

void tst_TaskQueue::tasksPostedByTasksRun() {
    TaskQueue queue;
    int depth = 0;
    std::function<void()> again = [&] {
        if (++depth < 10)
            queue.post(again);
    };
    queue.post(again);
    QTRY_COMPARE(depth, 10);
}

void tst_TaskQueue::unrunTasksAreDropped() {
    const auto held = std::make_shared<int>(1);
    {
        TaskQueue queue;
        for (int n = 0; n < 3; ++n)
            queue.post([held] { QFAIL("a dropped task ran"); });
        QCOMPARE(held.use_count(), 4L);
    }
    QCOMPARE(held.use_count(), 1L);
}

QTEST_GUILESS_MAIN(tst_TaskQueue)
#include "tst_TaskQueue.moc"
