#include "base/CallbackGate.h"

bool CallbackGate::enter() {
    return (inside_.fetch_add(1, std::memory_order_acquire) & Closed) == 0;
}

void CallbackGate::leave() {
    if (inside_.fetch_sub(1, std::memory_order_release) == Closed + 1)
        inside_.notify_all();
}

void CallbackGate::close() {
    int now = inside_.fetch_or(Closed, std::memory_order_acq_rel) | Closed;
    while (now != Closed) {
        inside_.wait(now, std::memory_order_acquire);
        now = inside_.load(std::memory_order_acquire);
    }
}
