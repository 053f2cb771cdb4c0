#include "media/loop/LoopPainter.h"

#include "media/loop/MeasuringPainter.h"

#include <algorithm>
#include <string>

namespace ipncsdk::media {

namespace {

constexpr std::string_view clockCharacters = "0123456789:.";
constexpr Colour white = rgb(255, 255, 255);
constexpr Colour black = rgb(0, 0, 0);

std::string twoDigits(int value) {
    return {static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10)};
}

/// White text with a shadow that keeps it readable on snow as well.
void paintText(Canvas& canvas, int left, int top, const Mask& mask) {
    const int shadow = std::max(1, mask.height / 16);
    canvas.mask(left + shadow, top + shadow, mask, black, 0.75F);
    canvas.mask(left, top, mask, white);
}

} // namespace

LoopPainter::LoopPainter(const LoopKey& key, std::shared_ptr<const Picture> background)
    : key_(key)
    , scene_(sceneOf(key.source.scene))
    , measuring_(isMeasuringScene(key.source.scene) ? std::make_unique<MeasuringPainter>(key) : nullptr)
    , background_(std::move(background)) {
    const TextPainter text;
    const int lineHeight = key.height() / 15;
    title_ = text.line(key.source.title, lineHeight, key.width() * 6 / 10);
    for (std::size_t index = 0; index < clockGlyphs_.size(); ++index) {
        clockGlyphs_[index] = text.line(clockCharacters.substr(index, 1), lineHeight, lineHeight * 2);
        clockCell_ = std::max(clockCell_, clockGlyphs_[index].width);
    }
}

LoopPainter::~LoopPainter() = default;

Picture LoopPainter::paintBackdrop(int scene, int width, int height, const Window& window) {
    Picture picture;
    picture.resize(width, height);
    Canvas canvas(picture, window);
    canvas.rect(0, 0, Canvas::sceneWidth, Canvas::sceneHeight, black);
    sceneOf(scene).paintBackground(canvas);
    return picture;
}

void LoopPainter::paint(int index, Picture& picture, const View& view) {
    const auto length = static_cast<unsigned>(key_.length());
    const int frame = static_cast<int>((static_cast<unsigned>(index) + key_.source.phase % length) % length);
    paintScene(frame, picture, windowOf(view));
    defocus(picture, view.focus);
    expose(picture, view.iris);
    Canvas canvas(picture);
    const int margin = key_.height() / 30;
    paintText(canvas, margin, margin, title_);
    paintClock(canvas, frame);
    paintBar(canvas, frame);
}

void LoopPainter::paintScene(int frame, Picture& picture, const Window& window) {
    if (measuring_ != nullptr) {
        measuring_->paint(frame, window, picture);
        return;
    }
    if (!(window == window_)) {
        background_ =
            std::make_shared<const Picture>(paintBackdrop(key_.source.scene, key_.width(), key_.height(), window));
        window_ = window;
    }
    picture = *background_;
    Canvas canvas(picture, window_);
    scene_.paintFrame(canvas, static_cast<float>(frame) / static_cast<float>(loopLength));
}

void LoopPainter::paintClock(Canvas& canvas, int frame) const {
    const int seconds = frame / loopFrameRate;
    const std::string clock = twoDigits(seconds / 3600) + ':' + twoDigits(seconds / 60 % 60) + ':' +
                              twoDigits(seconds % 60) + '.' + twoDigits(frame % loopFrameRate * 100 / loopFrameRate);
    const int margin = key_.height() / 30;
    const auto cellOf = [&](char character) {
        return character == ':' || character == '.' ? clockCell_ / 2 : clockCell_;
    };
    int width = 0;
    for (const char character : clock) {
        width += cellOf(character);
    }
    int pen = key_.width() - margin - width;
    for (const char character : clock) {
        const Mask& glyph = clockGlyphs_[clockCharacters.find(character)];
        paintText(canvas, pen + (cellOf(character) - glyph.width) / 2, margin, glyph);
        pen += cellOf(character);
    }
}

/// A thin bar along the lower edge that fills over the loop: a frame that is missing or shown twice is seen at once.
void LoopPainter::paintBar(Canvas& canvas, int frame) const {
    const float part = static_cast<float>(frame + 1) / static_cast<float>(key_.length());
    canvas.rect(0, Canvas::sceneHeight - 0.08F, Canvas::sceneWidth, 0.08F, black, 0.55F);
    canvas.rect(0, Canvas::sceneHeight - 0.08F, Canvas::sceneWidth * part, 0.08F, rgb(0, 153, 255));
}

} // namespace ipncsdk::media
