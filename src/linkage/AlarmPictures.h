#pragma once

#include <QStringList>

namespace corvanta::linkage {

struct OpenAlarm;

/// The picture files of an alarm on these drives, the newest first: those that it names, and where it names none
/// those that the device took around its time. Looks into the folders of a day or two.
QStringList picturesOf(const OpenAlarm& alarm, const QStringList& drives);

} // namespace corvanta::linkage
