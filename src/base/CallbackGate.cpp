#include "base/CallbackGate.h"

#include <thread>

bool CallbackGate::enter() {
    return (inside_.fetch_add(1, std::memory_order_acquire) & Closed) == 0;
}

void CallbackGate::leave() {
    if (inside_.fetch_sub(1, std::memory_order_release) == Closed + 1)
        inside_.notify_all();
}

void CallbackGate::awaitPresent() {
    // A change of the count, not a mere look: so the next passage follows it in order, and sees what was before it.
    while ((inside_.fetch_add(0, std::memory_order_acq_rel) & ~Closed) != 0)
        std::this_thread::yield();
}

void CallbackGate::close() {
    int now = inside_.fetch_or(Closed, std::memory_order_acq_rel) | Closed;
    while (now != Closed) {
        inside_.wait(now, std::memory_order_acquire);
        now = inside_.load(std::memory_order_acquire);
    }
}
