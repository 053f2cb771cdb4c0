#include "e2e/Sight.h"

#include "base/ui/Theme.h"
#include "e2e/Desktop.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>

namespace theme = corvanta::theme;

namespace sight {

namespace {

constexpr int MenuButton = 28; // px, with its margin, in a corner of one of the tiles
constexpr int TextLine = 28;   // px, the line with the name, at the top

/// Without the tile's lines, its hint and the layout menu's button.
QRect inner(const QRect& tile) {
    const int side = std::max(tile.width() / 8, std::min(MenuButton, tile.width() / 3));
    return tile.adjusted(side, std::max(tile.height() / 3, std::min(TextLine, tile.height() / 2)), -tile.width() / 8,
                         -tile.height() / 8);
}

double shareOfGrey(const QImage& image) {
    int grey = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            grey += image.pixel(x, y) == theme::Tile.rgb() ? 1 : 0;
    }
    return image.isNull() ? 0.0 : static_cast<double>(grey) / (image.width() * image.height());
}

} // namespace

bool isEmpty(const QRect& tile) {
    return shareOfGrey(Desktop::look(inner(tile))) == 1.0;
}

bool isSelected(const QRect& tile) {
    const QImage image = Desktop::look(tile);
    return image.pixel(image.width() / 2, 0) == theme::Selection.rgb() &&
           image.pixel(0, image.height() / 2) == theme::Selection.rgb();
}

bool isPicture(const QRect& tile) {
    const QImage image = Desktop::look(inner(tile));
    return !image.isNull() && shareOfGrey(image) < 0.3;
}

bool hasStripes(const QRect& tile) {
    const QImage image = Desktop::look(tile);
    constexpr QRgb beside = qRgb(40, 40, 40);
    const auto isDark = [&image](int y) {
        for (int x = image.width() / 3; x < image.width() * 2 / 3; ++x) {
            if (image.pixel(x, y) != beside)
                return false;
        }
        return true;
    };
    return !image.isNull() && isDark(image.height() / 12) && isDark(image.height() * 11 / 12);
}

bool becomesLive(const QRect& tile) {
    constexpr int pictures = 8;
    QList<QImage> seen;
    return QTest::qWaitFor(
        [&] {
            const QImage image = Desktop::look(inner(tile));
            if (shareOfGrey(image) < 0.3 && !seen.contains(image))
                seen.append(image);
            return seen.size() >= pictures;
        },
        Desktop::Patience);
}

double difference(const QImage& one, const QImage& other) {
    constexpr int clear = 24; // of 255; less is the coding's
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            different += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > clear ? 1 : 0;
    }
    return one.isNull() ? 0.0 : static_cast<double>(different) / (one.width() * one.height());
}

bool becomesStill(const QRect& tile) {
    constexpr int longEnough = 2000; // ms; a live picture changes many times in it
    QImage last = Desktop::look(inner(tile));
    QElapsedTimer sinceChange;
    sinceChange.start();
    return QTest::qWaitFor(
        [&] {
            const QImage image = Desktop::look(inner(tile));
            if (image != last) {
                last = image;
                sinceChange.start();
            }
            return sinceChange.elapsed() > longEnough;
        },
        Desktop::Patience);
}

} // namespace sight
