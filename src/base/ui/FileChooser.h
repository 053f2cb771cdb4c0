#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// File dialogs that look like all others. Where the system has one of its own that every user knows, that is shown.
/// `filter` is as a file dialog takes it; an empty result means that nothing was chosen.

/// An existing file, beginning in `folder`.
QString chooseFile(QWidget* parent, const QString& title, const QString& folder, const QString& filter);
/// One or more existing files, beginning in `folder`.
QStringList chooseFiles(QWidget* parent, const QString& title, const QString& folder, const QString& filter);
/// A name for a file to be written, beginning with `proposal` (a whole path); the user has agreed if the file exists.
QString chooseNewFile(QWidget* parent, const QString& title, const QString& proposal, const QString& filter);
/// The same, without having asked about a file that exists: for who adds to the name first.
QString chooseSaveFile(QWidget* parent, const QString& title, const QString& folder, const QString& name,
                       const QString& filter);
