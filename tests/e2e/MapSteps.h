#pragma once

#include "e2e/Accessible.h"

#include <QPoint>
#include <QRect>
#include <QStringList>

class Program;

/// Maps of the built program, as an operator uses them.
namespace mapSteps {

/// The first cell's map; an empty place while none is open.
QRect canvas(const Program& program);
/// Right-clicks a cell and opens the map of this number, from 0, by keys alone; whether the menus came up.
bool openMap(const Program& program, const QRect& cell, int number);
/// What a marker's picture and what blinks round it fill, without the label.
QRect aroundMarker(const QPoint& place);
/// Waits until this place of the screen looks several times different from the time before; false when it does not.
bool blinks(const QRect& area);

/// What the service keeps of markers of a device: "map|pid|x|y", the newest last.
QStringList markersOf(const QString& store, const QString& ipncId);

} // namespace mapSteps
