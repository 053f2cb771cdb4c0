#include "monitor/TileGrid.h"

TileGrid::TileGrid(int maximumRows, int maximumColumns)
    : maximumRows_(maximumRows)
    , maximumColumns_(maximumColumns)
    , rows_(maximumRows)
    , columns_(maximumColumns) {}

bool TileGrid::setLayout(int rows, int columns) {
    zoomIndex_ = -1;
    if (rows < 1 || columns < 1 || rows > maximumRows_ || columns > maximumColumns_)
        return false;
    rows_ = rows;
    columns_ = columns;
    return true;
}

bool TileGrid::isIndexShown(int index) const {
    if (index < 0)
        return false;
    if (zoomIndex_ >= 0)
        return index == zoomIndex_;
    return index < rows_ * columns_;
}
