#pragma once

#include "base/Language.h"

#include <QString>

#include <functional>
#include <utility>

class QAbstractButton;
class QAction;
class QLabel;
class QLineEdit;
class QWidget;

/// Texts that follow the interface's language while they are shown. What lives only as long as a modal dialog needs
/// none of this: it is made in the language of its day.
namespace corvanta {

/// A text that is translated each time it is asked for: `[] { return tr("..."); }`.
using Text = std::function<QString()>;

/// Calls `say` now and whenever the language has changed, as long as `owner` lives. `say` sets the texts of what
/// lives as long as `owner` does. GUI thread.
template <typename Say>
void worded(QObject* owner, Say say) {
    say();
    QObject::connect(&LanguageNotice::instance(), &LanguageNotice::changed, owner, std::move(say));
}

/// The text of a label, a button or an action.
void wordedText(QLabel* label, Text text);
void wordedText(QAbstractButton* button, Text text);
void wordedText(QAction* action, Text text);
/// A hint in an empty edit.
void wordedHint(QLineEdit* edit, Text text);
/// A widget's accessible name.
void wordedName(QWidget* widget, Text text);
/// A widget's tool tip.
void wordedTip(QWidget* widget, Text text);

} // namespace corvanta
