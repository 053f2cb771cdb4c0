#pragma once

#include <QString>

class QWidget;

/// Lets the user choose an existing file, beginning in `folder`; empty when none was chosen. `filter` as a file
/// dialog takes it. Where the system has a dialog of its own that every user knows, that one is shown.
QString chooseFile(QWidget* parent, const QString& title, const QString& folder, const QString& filter);

/// Lets the user name a file to be written, beginning in `folder` with a proposed `name`; empty when none was named.
/// The file may exist, and nobody has been asked yet whether it may be replaced.
QString chooseSaveFile(QWidget* parent, const QString& title, const QString& folder, const QString& name,
                       const QString& filter);
