#pragma once

#include <QColor>

/// The palette. Greys that step back behind the pictures, one blue for what is chosen, red for alarms and
/// recording alone, amber for warnings, green for healthy. The style sheet uses the same values.
namespace corvanta::theme {

inline const QColor Frame(125, 125, 125);
inline const QColor Bar(58, 62, 66);   ///< top bar and bottom bar
inline const QColor Panel(72, 76, 80); ///< device tree
inline const QColor Tile(174, 174, 174);
inline const QColor TileLine(121, 121, 121);
inline const QColor Popup(235, 235, 235); ///< menus and dialogs
inline const QColor Selection(0, 153, 255);
inline const QColor TextOnDark(230, 230, 230);
inline const QColor FaintOnDark(160, 165, 170);
inline const QColor TextOnLight(40, 42, 45);
inline const QColor FaintOnLight(110, 114, 118);
inline const QColor Alarm(224, 62, 54);
inline const QColor Warning(240, 173, 58);
inline const QColor Healthy(88, 190, 112);

inline constexpr int Step = 4;           ///< px; every distance is a multiple
inline constexpr int IconSize = 20;      ///< px
inline constexpr int ControlHeight = 28; ///< px

} // namespace corvanta::theme
