#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

namespace corvanta::map {

/// A picture in its own size and in halves of it, so that any scale is drawn from one that is at most twice as large:
/// crisp, and never more pixels than are seen. Made once, in a thread of its own where it is large; drawn by the GUI.
class PicturePyramid final {
public:
    /// Largest that is read: what the service takes.
    static constexpr qint64 LargestFile = 64LL << 20; // bytes
    static constexpr qint64 MostPixels = 120LL * 1000 * 1000;

    PicturePyramid() = default;
    /// Reads a PNG or JPEG file, whatever its name says. Empty, with one debug line, for anything else.
    static PicturePyramid read(const QString& path);
    /// `picture` itself becomes the first level.
    static PicturePyramid of(QImage picture);

    bool isEmpty() const { return levels_.empty(); }
    QSize size() const { return isEmpty() ? QSize() : levels_.front().size(); }

    /// A part of a level, which shares its pixels with the level.
    struct Part {
        QImage image;
        QRectF place; ///< of the part, in the picture's own pixels
    };
    /// What to draw for `wanted` (the picture's own pixels), where a pixel of the picture takes `scale` of the
    /// screen.
    Part part(const QRectF& wanted, double scale) const;

private:
    std::vector<QImage> levels_; ///< each half as large as the one before
};

} // namespace corvanta::map
