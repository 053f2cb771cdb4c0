#include "api/AlarmPictures.h"

#include "base/Log.h"
#include "base/ReplaceFile.h"
#include "base/Text.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

namespace ipncsdk::api {

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr int threadCount = 2;
constexpr int pictureWidth = 1920; ///< pixels, at most
constexpr std::chrono::seconds pictureTimeout{8};
/// A recording may have to wait for pictures of others.
constexpr std::chrono::seconds ringReserve{15};
constexpr std::size_t mostJobs = 200;
constexpr std::size_t mostRecent = 1000;
constexpr std::size_t longestPath = 4096;

/// Digits of a date and time.
std::string stampOf(const AlarmPictures::Wish& wish) {
    std::string stamp;
    std::copy_if(wish.datetime.begin(), wish.datetime.end(), std::back_inserter(stamp),
                 [](char c) { return c >= '0' && c <= '9'; });
    return stamp;
}

std::string recordingName(const AlarmPictures::Wish& wish) {
    return stampOf(wish) + "-" + std::to_string(wish.level) + ".avi";
}

} // namespace

std::string AlarmPictures::pictureName(const Wish& wish) {
    return stampOf(wish) + "-" + std::to_string(wish.level) + ".jpg";
}

AlarmPictures::AlarmPictures(Parts parts)
    : parts_(std::move(parts)) {
    for (int i = 0; i < threadCount; ++i)
        threads_.emplace_back([this] { work(); });
}

AlarmPictures::~AlarmPictures() {
    stop();
}

void AlarmPictures::stop() {
    follow({});
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        jobs_.clear();
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void AlarmPictures::begin(Followed& followed) {
    followed.ring = std::make_shared<media::FrameRing>(before + after + ringReserve);
    followed.hubId = parts_.follows ? parts_.hub.subscribe(followed.subscription, followed.ring) : 0;
}

void AlarmPictures::follow(std::vector<media::Subscription> streams) {
    std::vector<int> ended;
    {
        const std::lock_guard lock(mutex_);
        std::map<std::string, Followed> previous = std::exchange(followed_, {});
        for (media::Subscription& stream : streams) {
            if (stopping_)
                break;
            const std::string camera = stream.camera;
            const auto known = previous.find(camera);
            if (known != previous.end() && known->second.subscription.source == stream.source &&
                !known->second.ring->isClosed()) {
                followed_[camera] = known->second;
                previous.erase(known);
                continue;
            }
            Followed& followed = followed_[camera];
            followed.subscription = std::move(stream);
            begin(followed);
        }
        for (const auto& [camera, followed] : previous)
            ended.push_back(followed.hubId);
    }
    for (const int hubId : ended)
        parts_.hub.unsubscribe(hubId);
}

void AlarmPictures::take(const Wish& wish) {
    const auto wall = parts_.clock.now().time_since_epoch();
    const milliseconds age = std::chrono::duration_cast<milliseconds>(wall) - milliseconds(wish.madeAt);
    const Steady now = std::chrono::steady_clock::now();
    const Steady alarm = now - std::clamp(age, milliseconds(0), milliseconds(ringReserve));
    const std::string key = wish.ipncid + "/" + pictureName(wish);
    {
        const std::lock_guard lock(mutex_);
        if (stopping_ || std::find(recent_.begin(), recent_.end(), key) != recent_.end())
            return;
        recent_.push_back(key);
        if (recent_.size() > mostRecent)
            recent_.pop_front();
        if (jobs_.size() >= mostJobs)
            return logLine("an alarm gets no picture: too many wait");
        jobs_.emplace(now, Job{wish, alarm, false});
        if (parts_.follows)
            jobs_.emplace(alarm + after, Job{wish, alarm, true});
        // A stream that could not be opened, or ended, is tried again for the next alarm.
        const auto followed = followed_.find(wish.ipncid);
        if (followed != followed_.end() && followed->second.ring->isClosed())
            begin(followed->second);
    }
    changed_.notify_all();
}

void AlarmPictures::work() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (jobs_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const Steady due = jobs_.begin()->first;
        if (due > std::chrono::steady_clock::now()) {
            changed_.wait_until(lock, due);
            continue;
        }
        const Job job = jobs_.begin()->second;
        jobs_.erase(jobs_.begin());
        lock.unlock();
        if (job.isRecording)
            takeRecording(job);
        else
            takePicture(job.wish);
        lock.lock();
    }
}

void AlarmPictures::takePicture(const Wish& wish) {
    media::Subscription subscription;
    {
        const std::lock_guard lock(mutex_);
        const auto followed = followed_.find(wish.ipncid);
        if (followed == followed_.end())
            return;
        subscription = followed->second.subscription;
    }
    std::vector<std::uint8_t> jpeg;
    subscription.coded = false;
    const media::StreamError error = parts_.hub.preview(subscription, pictureWidth, pictureTimeout, jpeg);
    if (error == media::StreamError::None)
        store(wish, pictureName(wish), jpeg);
    else
        logLine("no picture of an alarm of " + wish.ipncid);
}

void AlarmPictures::takeRecording(const Job& job) {
    std::shared_ptr<media::FrameRing> ring;
    {
        const std::lock_guard lock(mutex_);
        const auto followed = followed_.find(job.wish.ipncid);
        if (followed == followed_.end())
            return;
        ring = followed->second.ring;
    }
    const std::vector<std::uint8_t> bytes = ring->clip(job.alarm - before, job.alarm + after).avi();
    if (bytes.empty())
        return logLine("no recording of an alarm of " + job.wish.ipncid);
    const auto path = store(job.wish, recordingName(job.wish), bytes);
    if (path && job.wish.tellsVideo)
        parts_.askClient(
            {{"type", "trigger"},
             {"content", "报警录像已保存"},
             {"alarm", {{"ipncid", job.wish.ipncid}, {"datetime", job.wish.datetime}, {"videopath", *path}}}});
}

std::optional<std::string> AlarmPictures::store(const Wish& wish, const std::string& name,
                                                const std::vector<std::uint8_t>& bytes) {
    const std::string reply = parts_.askClient({{"type", "reqalarmpath"},
                                                {"ipncid", wish.ipncid},
                                                {"filename", name},
                                                {"date", wish.datetime.substr(0, std::string("yyyy-MM-dd").size())}});
    if (reply.empty())
        return std::nullopt;
    std::error_code error;
    const fs::path folder = parts_.root / fs::path(std::u8string(reply.begin(), reply.end()));
    if (!isPlainText(reply, longestPath) || !fs::is_directory(folder, error)) {
        logLine("the client names no folder for the files of an alarm");
        return std::nullopt;
    }
    unsigned number = 0;
    {
        const std::lock_guard lock(mutex_);
        number = ++lastPart_;
    }
    // Another process on this machine may write the same file.
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    const fs::path part =
        folder / ("." + name + "." + std::to_string(ticks) + "-" + std::to_string(number) + ".part");
    std::ofstream out(part, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out)
        error = replaceFile(part, folder / name);
    if (!out || error) {
        logLine("a file of an alarm of " + wish.ipncid + " can't be written");
        fs::remove(part, error);
        return std::nullopt;
    }
    return reply + (reply.back() == '/' ? "" : "/") + name;
}

} // namespace ipncsdk::api
