#include "base/ui/Worded.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>

namespace corvanta {

void wordedText(QLabel* label, Text text) {
    worded(label, [label, text = std::move(text)] { label->setText(text()); });
}

void wordedText(QAbstractButton* button, Text text) {
    worded(button, [button, text = std::move(text)] { button->setText(text()); });
}

void wordedText(QAction* action, Text text) {
    worded(action, [action, text = std::move(text)] { action->setText(text()); });
}

void wordedHint(QLineEdit* edit, Text text) {
    worded(edit, [edit, text = std::move(text)] { edit->setPlaceholderText(text()); });
}

void wordedName(QWidget* widget, Text text) {
    worded(widget, [widget, text = std::move(text)] { widget->setAccessibleName(text()); });
}

void wordedTip(QWidget* widget, Text text) {
    worded(widget, [widget, text = std::move(text)] { widget->setToolTip(text()); });
}

} // namespace corvanta
