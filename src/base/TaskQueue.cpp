#include "base/TaskQueue.h"

#include <memory>

TaskQueue::TaskQueue(QObject* parent)
    : QObject(parent) {
    connect(this, &TaskQueue::sigWake, this, &TaskQueue::drain, Qt::QueuedConnection);
}

TaskQueue::~TaskQueue() {
    for (Node* node = takeAll(); node != nullptr;) {
        const std::unique_ptr<Node> dropped(node);
        node = dropped->next;
    }
}

void TaskQueue::post(Task task) {
    auto node = std::make_unique<Node>();
    node->task = std::move(task);
    node->next = newest_.load(std::memory_order_relaxed);
    while (!newest_.compare_exchange_weak(node->next, node.get(), std::memory_order_release,
                                          std::memory_order_relaxed)) {
    }
    (void)node.release(); // the stack owns it now
    if (!woken_.exchange(true, std::memory_order_acq_rel))
        emit sigWake();
}

TaskQueue::Node* TaskQueue::takeAll() {
    Node* oldest = nullptr;
    for (Node* node = newest_.exchange(nullptr, std::memory_order_acquire); node != nullptr;) {
        Node* const next = node->next;
        node->next = oldest;
        oldest = node;
        node = next;
    }
    return oldest;
}

void TaskQueue::drain() {
    // Cleared first: a task posted from here on sends a wake-up of its own, so none can be left lying.
    woken_.store(false, std::memory_order_release);
    for (Node* node = takeAll(); node != nullptr;) {
        const std::unique_ptr<Node> current(node);
        node = current->next;
        current->task();
    }
}
