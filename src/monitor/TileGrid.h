#pragma once

/// Which tiles of the pool are shown: a value, without widgets.
///
/// States: normal (no zoom; the tiles 0 .. rows x columns - 1 are shown) and zoomed (one tile is shown alone).
/// `toggleZoom` goes from one to the other, every `setLayout` to normal.
class TileGrid final {
public:
    TileGrid(int maximumRows, int maximumColumns);

    int maximumRows() const { return maximumRows_; }
    int maximumColumns() const { return maximumColumns_; }
    int poolSize() const { return maximumRows_ * maximumColumns_; }
    int rows() const { return rows_; }
    int columns() const { return columns_; }
    /// The tile shown alone, -1 when none is.
    int zoomIndex() const { return zoomIndex_; }

    /// Chooses a layout and leaves the zoom. False when it does not fit the pool; then only the zoom is left.
    bool setLayout(int rows, int columns);
    /// Shows one tile alone; also an index without a tile, which shows nothing.
    void setZoom(int index) { zoomIndex_ = index; }

    /// Whether a tile is part of what is shown now.
    bool isIndexShown(int index) const;

private:
    int maximumRows_;
    int maximumColumns_;
    int rows_;
    int columns_;
    int zoomIndex_ = -1;
};
