#pragma once

#include <QImage>
#include <QString>

/// Printed codes as a camera sees them that looks at them squarely.
namespace codePicture {

/// Modules a side, without the quiet zone of four.
inline constexpr int Modules = 21;

/// A code of `modulePx` pixels a module, its middle at `centre`, on a grey ground.
QImage make(QSize size, QPointF centre, int modulePx, const QString& text = QStringLiteral("CORVANTA-1"));

/// The same with a bar code in place of the square one.
QImage makeBars(QSize size);

/// Draws a further code into a picture.
void add(QImage& picture, QPointF centre, int modulePx, const QString& text);

/// Has ffmpeg make a video of 25 pictures a second; false when that fails.
bool makeVideo(const QString& file, const QVector<QImage>& pictures, const QStringList& options = {});

} // namespace codePicture
