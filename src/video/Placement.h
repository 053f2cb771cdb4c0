#pragma once

#include "video/FrameSize.h"

#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

namespace corvanta::video {

/// How a picture lies in its tile.
enum class AspectMode {
    KeepRatio, ///< centred, with the picture's own ratio
    Stretch    ///< over the whole tile
};

/// The mode that the text of the setting "画面比例" means: "平铺" stretches, everything else keeps the ratio.
AspectMode aspectModeFromSetting(const QString& text);
/// The setting's text of a mode: "原始比例" or "平铺".
QString settingText(AspectMode mode);

/// The renderer's geometry in a tile, or nothing when the present one is to stay: without a picture there is no ratio
/// to keep, and a tile without room has no place for it.
std::optional<QRect> placeRenderer(AspectMode mode, QSize tile, FrameSize frame);

} // namespace corvanta::video
