#pragma once

#include "base/AppContext.h"

#include <QString>
#include <QVariantMap>

#include <functional>
#include <string>

class QAbstractButton;
class QWidget;

/// What the dialogs of devices share.
namespace corvanta::manage {

/// A request on behalf of a dialog: a failure is told, the dialog stays with its contents.
struct Sending {
    std::string json;
    QAbstractButton* busy = nullptr; ///< cannot be clicked until the reply is there; may be null
    std::function<void(const QVariantMap& resp)> done = {};
    std::function<void(const QString& text)> failed = {}; ///< in place of the tip, where there is one
};
/// False when the same request waits for its reply already.
bool send(const AppContext& context, QWidget* dialog, Sending sending);

/// Writes what the signed-in account did into the log of operations.
void log(const AppContext& context, const QString& what, const QString& detail);

/// Where files of the user are looked for and stored at first.
QString documentsFolder();

} // namespace corvanta::manage
