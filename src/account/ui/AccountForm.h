#pragma once

#include "base/AppContext.h"

#include <QString>
#include <QVariantMap>

#include <functional>

class QFormLayout;
class QLineEdit;
class QPushButton;
class QWidget;

/// What the dialogs of accounts share.
namespace corvanta::account {

/// A form as all dialogs have it.
QFormLayout* makeForm();
/// A labelled edit of a form. `name` is its accessible name: labels hold blanks that align them.
QLineEdit* addField(QFormLayout& form, const QString& label, const QString& name, const QString& objectName);

/// A tip with the usual title, not waited for; nothing while the same one is still open over `parent`.
void tell(const QString& text, QWidget* parent);

/// A request to the account service on behalf of a dialog: a failure is told, the dialog stays with its contents.
/// `busy` (may be null) cannot be clicked until the reply is there.
struct Request {
    QString operation;
    QVariantMap parameters = {};
    QPushButton* busy = nullptr;
    std::function<void(const QVariantMap& resp)> done = {};
    /// Turns the service's text for a refusal into the dialog's own; may be empty.
    std::function<QString(const QString& code, const QString& text)> refusal = {};
    /// Called after a failure was told; may be empty.
    std::function<void()> failed = {};
};
/// False when the same request waits for its reply already.
bool send(const AppContext& context, QWidget* dialog, Request request);

} // namespace corvanta::account
