#pragma once

#include <QString>
#include <QVariantMap>

namespace corvanta::video {

/// Name of the operation that opens a live video; tags the reports that come back.
QString openVideoOperation();

/// Whether a tile is shown so big that its device is asked for its main stream: it is the tile shown alone, or the
/// only one of a 1 x 1 layout. `zoomIndex` is -1 when no tile is shown alone.
bool wantsMainStream(int zoomIndex, int rows, int columns, int tileIndex);

/// The longest time that the SDK may spend opening, from the setting's text: 0 (no limit) for an empty text and for
/// "不限", otherwise the text as a decimal integer. A text that is no number means no limit too.
int maxOpenTime(const QString& setting);

/// The request that opens the decoded video of a device: {"avreq": {...}}, ready to be written as JSON.
/// `maxOpenTimeSetting` is the text of the setting "视频打开最长时间".
QVariantMap openVideoRequest(const QString& deviceId, bool mainStream, const QString& maxOpenTimeSetting);

} // namespace corvanta::video
