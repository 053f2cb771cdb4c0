#pragma once

#include <QTreeWidget>

#include <algorithm>

namespace corvanta::map {

/// Makes columns as wide as what is in them, but none so wide that the others are not seen.
inline void fitColumns(QTreeWidget& list, int columns) {
    constexpr int widest = 180; // px
    constexpr int more = 16;    // px, of a header's own margins
    for (int column = 0; column < columns; ++column) {
        list.resizeColumnToContents(column);
        list.setColumnWidth(column, std::min(list.columnWidth(column) + more, widest));
    }
}

} // namespace corvanta::map
