#include "linkage/Throttle.h"

#include <utility>

Throttle::Throttle(int milliseconds, Edge edge, std::function<void()> act)
    : act_(std::move(act))
    , edge_(edge) {
    timer_.setSingleShot(true);
    timer_.setInterval(milliseconds);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        if (waits_ && edge_ == Edge::Leading)
            timer_.start();
        flush();
    });
}

void Throttle::ask() {
    waits_ = true;
    if (timer_.isActive())
        return;
    timer_.start();
    if (edge_ == Edge::Leading)
        flush();
}

void Throttle::flush() {
    if (std::exchange(waits_, false))
        act_();
}
