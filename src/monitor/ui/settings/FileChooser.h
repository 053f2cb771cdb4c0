#pragma once

#include <QString>

class QWidget;

/// Lets the user choose an existing file, beginning in `folder`; empty when none was chosen. `filter` as a file
/// dialog takes it. Where the system has a dialog of its own that every user knows, that one is shown.
QString chooseFile(QWidget* parent, const QString& title, const QString& folder, const QString& filter);
