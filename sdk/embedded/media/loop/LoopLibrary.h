#pragma once

#include "media/Diagnostics.h"
#include "media/Picture.h"
#include "media/loop/Loop.h"

#include <deque>
#include <filesystem>
#include <map>
#include <thread>
#include <utility>

namespace ipncsdk::media {

/// Finds loops: in memory while somebody uses them, else in their files, else by making them. Thread-safe.
///
/// At most `makers` loops are made at a time, the others wait their turn in order. A loop that nobody wants any more
/// before its turn is not made; one that is being made is finished and kept, for the next one who wants it.
class LoopLibrary final {
public:
    LoopLibrary(std::filesystem::path folder, Log log);
    /// Breaks off what is being made.
    ~LoopLibrary();
    LoopLibrary(const LoopLibrary&) = delete;
    LoopLibrary& operator=(const LoopLibrary&) = delete;

    /// The loop of a key; its groups may come later. Reads the loop's file where there is one.
    std::shared_ptr<Loop> acquire(const LoopKey& key);
    /// The still part of a scene, painted at first use and kept while somebody has it; null for one that measures.
    std::shared_ptr<const Picture> backdrop(int scene, int width, int height);

private:
    static constexpr std::size_t makers = 2;

    bool loadFile(Loop& loop) const;
    void work();
    void make(Loop& loop);
    /// Makes what waits; for who is in the middle of a loop that takes long. False when the library ends.
    bool letOthersPass();

    const std::filesystem::path folder_;
    const Log log_;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool stopping_ = false;
    std::map<std::string, std::weak_ptr<Loop>> loops_; ///< by the key's text
    std::deque<std::weak_ptr<Loop>> waiting_;          ///< to be made, in this order
    std::size_t idle_ = 0;                             ///< threads that wait for something to make
    std::vector<std::thread> threads_;
    std::map<std::pair<int, int>, std::weak_ptr<const Picture>> backdrops_; ///< by scene and width
};

} // namespace ipncsdk::media
