#include "update/DownloadMeter.h"

#include <algorithm>
#include <cmath>

namespace corvanta::update {
namespace {

constexpr qint64 Window = 5000;     // ms
constexpr qint64 SoonestRate = 500; // ms
constexpr double LongestLeft = 99 * 3600.0;

} // namespace

DownloadMeter::DownloadMeter(std::vector<std::optional<qint64>> sizes)
    : sizes_(std::move(sizes)) {}

void DownloadMeter::update(qint64 now, qint64 received, qint64 total) {
    if (current_ >= sizes_.size())
        return;
    received_ = received;
    if (total > 0)
        sizes_[current_] = total;
    samples_.push_back({now, wastedBytes_ + finishedBytes_ + received_});
    while (samples_.size() > 2 && now - samples_.front().time > Window)
        samples_.pop_front();
}

void DownloadMeter::fetchAgain() {
    wastedBytes_ += received_;
    received_ = 0;
}

void DownloadMeter::finishFile() {
    if (current_ >= sizes_.size())
        return;
    sizes_[current_] = received_;
    finishedBytes_ += received_;
    received_ = 0;
    ++current_;
}

DownloadMeter::Reading DownloadMeter::reading() const {
    Reading reading;
    reading.files = static_cast<int>(sizes_.size());
    reading.filesDone = static_cast<int>(current_);
    reading.bytesDone = finishedBytes_ + received_;
    qint64 known = 0;
    qint64 knownFiles = 0;
    for (const auto& size : sizes_) {
        if (size) {
            known += *size;
            ++knownFiles;
        }
    }
    if (knownFiles > 0)
        reading.bytes = std::max(reading.bytesDone, known + (known / knownFiles) * (reading.files - knownFiles));
    if (samples_.size() < 2 || samples_.back().time - samples_.front().time < SoonestRate)
        return reading;
    const auto milliseconds = static_cast<double>(samples_.back().time - samples_.front().time);
    reading.bytesPerSecond =
        static_cast<double>(samples_.back().bytes - samples_.front().bytes) * 1000 / milliseconds;
    if (reading.bytesPerSecond > 0 && reading.bytes > 0) {
        const double left = static_cast<double>(reading.bytes - reading.bytesDone) / reading.bytesPerSecond;
        if (left < LongestLeft)
            reading.secondsLeft = static_cast<int>(std::ceil(left));
    }
    return reading;
}

} // namespace corvanta::update
