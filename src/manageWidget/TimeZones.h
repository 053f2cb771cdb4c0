#pragma once

#include <QString>

namespace corvanta::manage {

/// The places of a time zone, as the program's list of zones has them in Chinese, in the language that is spoken now.
/// Any thread.
QString zonePlaces(const QString& name);

} // namespace corvanta::manage
