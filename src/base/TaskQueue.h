#pragma once

#include <QObject>

#include <atomic>
#include <functional>

/// Carries work to the thread that it lives in (mostly: from SDK threads to the GUI thread). What one thread posts
/// runs in that order, and a task runs after every task that was posted before it became known.
///
/// A task holds standard types only (a text, a number, pointers): Qt's values share their contents by counting,
/// which is hard to reason about across threads. Posting takes no lock of ours and waits for nobody; one event
/// wakes the thread for any number of tasks. Outlives every thread that posts.
class TaskQueue final : public QObject {
    Q_OBJECT
public:
    using Task = std::function<void()>;

    explicit TaskQueue(QObject* parent = nullptr);
    /// Tasks that did not run are dropped.
    ~TaskQueue() override;

    /// Any thread.
    void post(Task task);

    /// Runs what was posted so far; own thread. Called by the wake-up event, and by who cannot wait for it.
    void drain();

    bool event(QEvent* event) override;

private:
    struct Node {
        Task task;
        Node* next = nullptr;
    };
    Node* takeAll();

    std::atomic<Node*> newest_{nullptr}; ///< a stack, the newest task on top
    std::atomic<bool> woken_{false};     ///< a wake-up event is on its way
};
