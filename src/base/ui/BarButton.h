#pragma once

#include "base/ui/Worded.h"

class QToolButton;
class QWidget;

namespace corvanta {

/// A button of a dark bar: a drawing, with `text` as its name and tool tip in the language of the day; reached by
/// Tab, added to no layout.
QToolButton* barButton(QWidget* parent, const QString& objectName, Text text, const QString& drawing);

} // namespace corvanta
