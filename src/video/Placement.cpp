#include "video/Placement.h"

namespace corvanta::video {

namespace {

constexpr int border = 1; ///< line round the tile, pixels, on each side

} // namespace

AspectMode aspectModeFromSetting(const QString& text) {
    return text == QStringLiteral("平铺") ? AspectMode::Stretch : AspectMode::KeepRatio;
}

QString settingText(AspectMode mode) {
    return mode == AspectMode::Stretch ? QStringLiteral("平铺") : QStringLiteral("原始比例");
}

std::optional<QRect> placeRenderer(AspectMode mode, QSize tile, FrameSize frame) {
    const qint64 roomWidth = tile.width() - 2 * border;
    const qint64 roomHeight = tile.height() - 2 * border;
    if (roomWidth <= 0 || roomHeight <= 0) {
        return std::nullopt;
    }
    if (mode == AspectMode::Stretch) {
        return QRect(border, border, static_cast<int>(roomWidth), static_cast<int>(roomHeight));
    }
    if (frame.width == 0 || frame.height == 0) {
        return std::nullopt;
    }
    // The centring offset is taken from the tile's corner, without the border that the other side begins after: a
    // centred picture lies one pixel further left or up than the room's middle. Kept, pictures have always lain so.
    const qint64 frameWidth = frame.width;
    const qint64 frameHeight = frame.height;
    if (frameWidth * roomHeight <= frameHeight * roomWidth) {
        const qint64 width = frameWidth * roomHeight / frameHeight;
        return QRect(static_cast<int>((roomWidth - width) / 2), border, static_cast<int>(width),
                     static_cast<int>(roomHeight));
    }
    const qint64 height = frameHeight * roomWidth / frameWidth;
    return QRect(border, static_cast<int>((roomHeight - height) / 2), static_cast<int>(roomWidth),
                 static_cast<int>(height));
}

} // namespace corvanta::video
