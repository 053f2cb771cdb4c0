#include "media/loop/LoopLibrary.h"

#include "media/ThreadRank.h"
#include "media/WholeFile.h"
#include "media/loop/LoopEncoder.h"
#include "media/loop/LoopFile.h"
#include "media/loop/LoopPainter.h"
#include "media/loop/Scene.h"

#include <algorithm>
#include <system_error>

namespace ipncsdk::media {

namespace {

/// No loop comes near it; a larger file is none of ours.
constexpr std::uintmax_t largestFile = 64U << 20;

} // namespace

LoopLibrary::LoopLibrary(std::filesystem::path folder, Log log)
    : folder_(std::move(folder))
    , log_(std::move(log)) {}

LoopLibrary::~LoopLibrary() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        changed_.notify_all();
    }
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

std::shared_ptr<Loop> LoopLibrary::acquire(const LoopKey& key) {
    std::shared_ptr<Loop> loop;
    {
        const std::lock_guard lock(mutex_);
        std::weak_ptr<Loop>& known = loops_[key.text()];
        if (auto existing = known.lock()) {
            return existing;
        }
        std::erase_if(loops_, [&](const auto& entry) { return &entry.second != &known && entry.second.expired(); });
        loop = std::make_shared<Loop>(key);
        known = loop;
    }
    // Whoever meets the loop meanwhile waits for its groups like one who waits for the maker.
    if (loadFile(*loop)) {
        return loop;
    }
    const std::lock_guard lock(mutex_);
    waiting_.push_back(loop);
    if (idle_ < waiting_.size() && threads_.size() < makers) {
        threads_.emplace_back(&LoopLibrary::work, this);
    }
    changed_.notify_one();
    return loop;
}

bool LoopLibrary::loadFile(Loop& loop) const {
    const std::filesystem::path file = folder_ / loop.key().fileName();
    const std::vector<std::uint8_t> bytes = readWholeFile(file, largestFile);
    const auto gops = unpackLoop(loop.key(), bytes);
    if (gops.empty()) {
        if (!bytes.empty() && log_) {
            log_("the recorded loop " + file.filename().string() +
                 " is damaged or of an older version: it is made anew");
        }
        return false;
    }
    for (const auto& gop : gops) {
        loop.append(gop);
    }
    return true;
}

void LoopLibrary::work() {
    setRank(ThreadRank::Background);
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (waiting_.empty()) {
            ++idle_;
            changed_.wait(lock);
            --idle_;
            continue;
        }
        const std::shared_ptr<Loop> loop = waiting_.front().lock();
        waiting_.pop_front();
        if (loop != nullptr) {
            lock.unlock();
            make(*loop);
            lock.lock();
        }
    }
}

bool LoopLibrary::letOthersPass() {
    while (true) {
        std::shared_ptr<Loop> next;
        {
            const std::lock_guard lock(mutex_);
            if (stopping_) {
                return false;
            }
            const auto isShort = [](const std::weak_ptr<Loop>& waiting) {
                const auto loop = waiting.lock();
                return loop != nullptr && loop->key().length() <= loopLength;
            };
            const auto found = std::find_if(waiting_.begin(), waiting_.end(), isShort);
            if (found == waiting_.end()) {
                return true;
            }
            next = found->lock();
            waiting_.erase(found);
        }
        if (next != nullptr) {
            make(*next);
        }
    }
}

void LoopLibrary::make(Loop& loop) {
    const LoopKey& key = loop.key();
    LoopPainter painter(key, backdrop(key.source.scene, key.width(), key.height()));
    LoopEncoder encoder(key.width(), key.height());
    Picture picture;
    std::vector<std::shared_ptr<const Gop>> gops;
    bool good = encoder.ready();
    for (int first = 0; good && first < key.length(); first += loopGopLength) {
        if (key.length() > loopLength && !letOthersPass()) {
            return;
        }
        auto gop = std::make_shared<Gop>();
        for (int frame = first; good && frame < first + loopGopLength; ++frame) {
            {
                const std::lock_guard lock(mutex_);
                if (stopping_) {
                    return;
                }
            }
            painter.paint(frame, picture);
            good = encoder.encode(picture, *gop);
        }
        if (good) {
            gops.push_back(gop);
            loop.append(std::move(gop));
        }
    }
    if (!good) {
        loop.fail();
        if (log_) {
            log_("a recorded loop cannot be made: the H.264 encoder is missing or refuses");
        }
        return;
    }
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (!writeWholeFile(folder_ / key.fileName(), packLoop(key, gops)) && log_) {
        log_("a recorded loop could not be stored and will be made again next time");
    }
}

std::shared_ptr<const Picture> LoopLibrary::backdrop(int scene, int width, int height) {
    if (isMeasuringScene(scene)) {
        return nullptr;
    }
    const std::pair place((scene % sceneCount() + sceneCount()) % sceneCount(), width);
    {
        const std::lock_guard lock(mutex_);
        if (auto known = backdrops_[place].lock()) {
            return known;
        }
    }
    auto painted = std::make_shared<const Picture>(LoopPainter::paintBackdrop(scene, width, height));
    const std::lock_guard lock(mutex_);
    backdrops_[place] = painted;
    return painted;
}

} // namespace ipncsdk::media
