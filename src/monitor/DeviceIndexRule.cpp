#include "monitor/DeviceIndexRule.h"

#include "base/DeviceModel.h"
#include "monitor/TileGrid.h"

#include <QCoreApplication>

namespace corvanta {

QString refusalToOpen(const TileGrid& grid, const DeviceModel& devices, const QString& ipncId) {
    const DeviceRecord* const device = devices.device(ipncId);
    if (device != nullptr && grid.isIndexShown(device->tileIndex))
        return {};
    const GroupRecord* const defaultGroup = devices.defaultGroup();
    const QString limit = QString::number(grid.poolSize());
    // The texts come from outside in part (ids, names), so every place is filled in one pass.
    if (defaultGroup != nullptr && devices.members(*defaultGroup).contains(ipncId))
        return QCoreApplication::translate("MonitorMainUI", "请确认设备[%1]在默认组[%2]中的索引小于%3")
            .arg(ipncId, defaultGroup->name, limit);
    return QString(QCoreApplication::translate(
                       "MonitorMainUI", "请确认设备[%1]在左侧设备树中的索引小于%3,或将设备[%1]所在组设为默认组"))
        .replace(QStringLiteral("%3"), limit)
        .replace(QStringLiteral("%1"), ipncId);
}

} // namespace corvanta
