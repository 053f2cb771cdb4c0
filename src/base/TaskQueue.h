#pragma once

#include <QObject>

#include <atomic>
#include <functional>

/// Carries work to the thread that it lives in (mostly: from SDK threads to the GUI thread). What one thread posts
/// runs in that order, and a task runs after every task that was posted before it became known.
///
/// A task holds standard types only (a text, a number, pointers): Qt's values share their contents by counting,
/// which is hard to reason about across threads. Posting takes no lock of ours and waits for nobody; one
/// wake-up serves the thread for any number of tasks. Outlives every thread that posts.
class TaskQueue final : public QObject {
    Q_OBJECT
public:
    using Task = std::function<void()>;

    explicit TaskQueue(QObject* parent = nullptr);
    /// Tasks that did not run are dropped.
    ~TaskQueue() override;

    /// Any thread.
    void post(Task task);

public slots:
    /// Runs what was posted so far; own thread. Called by the wake-up, and by who cannot wait for it.
    void drain();

signals:
    /// Wakes the own thread.
    void sigWake();

private:
    struct Node {
        Task task;
        Node* next = nullptr;
    };
    Node* takeAll();

    std::atomic<Node*> newest_{nullptr}; ///< a stack, the newest task on top
    std::atomic<bool> woken_{false};     ///< a wake-up is on its way
};
