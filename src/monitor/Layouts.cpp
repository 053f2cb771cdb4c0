#include "monitor/Layouts.h"

#include <QtGlobal>

namespace corvanta {

const std::array<Layout, 8>& layouts() {
    static constexpr std::array<Layout, 8> Table{{
        {1, 1, 1, QT_TRANSLATE_NOOP("Fwidget", "一窗口"), true},
        {4, 2, 2, QT_TRANSLATE_NOOP("Fwidget", "四窗口"), true},
        {9, 3, 3, QT_TRANSLATE_NOOP("Fwidget", "九窗口"), true},
        {16, 4, 4, QT_TRANSLATE_NOOP("Fwidget", "十六窗口"), true},
        {18, 3, 6, QT_TRANSLATE_NOOP("Fwidget", "十八窗口"), false},
        {25, 5, 5, QT_TRANSLATE_NOOP("Fwidget", "二十五窗口"), false},
        {36, 6, 6, QT_TRANSLATE_NOOP("Fwidget", "三十六窗口"), true},
        {64, 8, 8, QT_TRANSLATE_NOOP("Fwidget", "六十四窗口"), true},
    }};
    return Table;
}

} // namespace corvanta
