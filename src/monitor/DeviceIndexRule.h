#pragma once

#include <QString>

class DeviceModel;
class TileGrid;

/// Whether a device may be opened: every device has a fixed tile, and that tile must be one that is shown.
namespace corvanta {

/// The text to show instead of opening, empty when the device's tile is shown. The limit in the text is the size of
/// the whole pool, not of the layout on the screen: so the text always tells how far the numbering can go.
QString refusalToOpen(const TileGrid& grid, const DeviceModel& devices, const QString& ipncId);

} // namespace corvanta
