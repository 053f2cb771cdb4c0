#pragma once

#include "media/loop/LoopFormat.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace ipncsdk::media {

/// One loop in memory: its key frame groups, which may still be growing. Thread-safe.
class Loop final {
public:
    explicit Loop(LoopKey key)
        : key_(std::move(key)) {}
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    const LoopKey& key() const { return key_; }

    /// The group of a number below the key's `gopCount`; null while it is not there yet. Waits for it up to
    /// `patience`.
    std::shared_ptr<const Gop> gop(std::size_t number, std::chrono::milliseconds patience) const;
    /// It cannot be made; `gop` gives nothing that is not there already.
    bool failed() const;

    void append(std::shared_ptr<const Gop> gop);
    void fail();

private:
    const LoopKey key_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<std::shared_ptr<const Gop>> gops_;
    bool failed_ = false;
};

} // namespace ipncsdk::media
