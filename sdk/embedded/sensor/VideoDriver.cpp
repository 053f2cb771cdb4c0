#include "sensor/VideoDriver.h"

#include "sensor/PictureMeter.h"

#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr std::chrono::milliseconds patience{3000};

} // namespace

VideoDriver::VideoDriver(const Board& board, std::function<std::unique_ptr<PictureSource>()> pictures)
    : inputs_(board.inputs)
    , pictures_(std::move(pictures)) {}

VideoDriver::~VideoDriver() = default;

std::string VideoDriver::open() {
    source_ = pictures_();
    if (!source_)
        return "the device has no pictures now";
    meters_.clear();
    for (const Port& input : inputs_)
        meters_.push_back(std::make_unique<PictureMeter>(input.params));
    // The first picture is what the next one is compared with.
    const auto first = source_->next(patience);
    if (!first) {
        close();
        return "no picture comes";
    }
    for (const auto& meter : meters_)
        meter->measure(*first);
    return {};
}

void VideoDriver::close() {
    source_.reset();
}

std::string VideoDriver::read(std::vector<RawValue>& raw) {
    const auto picture = source_ ? source_->next(patience) : std::nullopt;
    if (!picture)
        return "no picture comes";
    for (std::size_t i = 0; i < meters_.size(); ++i)
        raw[i].value = meters_[i]->measure(*picture);
    return {};
}

std::string VideoDriver::write(const Port& /*output*/, double /*value*/) {
    return "pictures have no outputs";
}

} // namespace ipncsdk::sensor
