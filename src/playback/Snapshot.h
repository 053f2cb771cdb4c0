#pragma once

#include "playback/Picture.h"

#include <QImage>

namespace corvanta::playback {

/// A picture in RGB, with the colours that the renderer shows.
QImage toImage(const Picture& picture);

/// Writes a picture as JPEG or PNG, by the suffix of `path`; a file that is there is replaced only when all was
/// written. False when that fails.
bool saveSnapshot(const QImage& picture, const QString& path);
bool saveSnapshot(const Picture& picture, const QString& path);

} // namespace corvanta::playback
