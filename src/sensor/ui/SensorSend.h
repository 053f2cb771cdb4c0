#pragma once

#include "base/AppContext.h"

#include <QString>
#include <QVariantMap>

#include <functional>

class QAbstractButton;
class QWidget;

/// What the dialogs of sensors share.
namespace corvanta::sensor {

/// Writes what the signed-in account did to sensors into the log of operations.
void logChange(const AppContext& context, const QString& what, const QString& detail);

/// Has an input read now; `done` is told "raw", "value" and "state". A failure is told over `dialog`. `busy` (may be
/// null) waits meanwhile.
void readNow(const AppContext& context, QWidget* dialog, const QString& ipncId, int pid, QAbstractButton* busy,
             std::function<void(const QVariantMap& read)> done);

/// A number as dialogs show it.
QString numberText(double value);

} // namespace corvanta::sensor
