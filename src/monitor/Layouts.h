#pragma once

#include <array>

/// The shapes of the tile grid.
namespace corvanta {

struct Layout {
    int tiles;
    int rows;
    int columns;
    const char* menuText; ///< UTF-8, to be translated in the context "Fwidget"
    bool hasButton;       ///< has a button of its own in the main window; its drawing is "<tiles>_pic"
};

/// In the order of the menu. 18 tiles are 3 rows of 6, on purpose: the others are square.
const std::array<Layout, 8>& layouts();

} // namespace corvanta
