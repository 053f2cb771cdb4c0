#pragma once

#include <QString>

class QToolButton;
class QWidget;

namespace corvanta {

/// A button of a dark bar: a drawing, with `text` as its name and tool tip; reached by Tab, added to no layout.
QToolButton* barButton(QWidget* parent, const QString& objectName, const QString& text, const QString& drawing);

} // namespace corvanta
