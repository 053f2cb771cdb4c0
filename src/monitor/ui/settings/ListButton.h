#pragma once

#include <QString>

class QToolButton;
class QWidget;

/// A small button beside a list of a dialog: a drawing, with `text` as its name and tool tip; reached by Tab, added
/// to no layout.
QToolButton* listButton(QWidget* parent, const QString& objectName, const QString& text, const QString& drawing);
