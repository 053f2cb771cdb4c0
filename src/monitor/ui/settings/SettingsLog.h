#pragma once

#include "base/AppContext.h"

#include <QStringList>

namespace corvanta::settings {

/// Writes down that the user changed these keys of the settings.
void logChanges(const AppContext& context, const QStringList& changedKeys);

} // namespace corvanta::settings
