#pragma once

#include <QImage>
#include <QRect>

/// What is seen of a tile.
namespace sight {

/// Whether nothing but the tile's grey and its hint is there.
bool isEmpty(const QRect& tile);
/// Whether its line is the one of the selected tile. The tile must be empty.
bool isSelected(const QRect& tile);
/// Whether a picture fills most of it, moving or not. A text alone is none.
bool isPicture(const QRect& tile);
/// Whether a picture leaves dark stripes above and below it.
bool hasStripes(const QRect& tile);
/// Waits until several pictures after one another were seen in the tile; false when they do not come. Texts that come
/// and go over the picture are too few to pass for them.
bool becomesLive(const QRect& tile);
/// The share of the pixels that clearly differ between two pictures of one size.
double difference(const QImage& one, const QImage& other);
/// Waits until nothing changes in the tile for a while; false when it never stands still.
bool becomesStill(const QRect& tile);

} // namespace sight
