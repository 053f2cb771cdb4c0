#pragma once

#include "linkage/Words.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QWidget;

/// What the forms of plans and rules share.
namespace corvanta::linkage {

/// A labelled list to choose from, a row of a form.
QComboBox* addCombo(QFormLayout& form, const QString& label, const QString& objectName);
/// The same without a form; `name` is its accessible name.
QComboBox* makeCombo(const QString& name, const QString& objectName, QWidget* parent);
void fill(QComboBox& combo, const Words& words);
/// A field for a number of milliseconds.
QLineEdit* makeInterval(const QString& objectName, QWidget* parent);
/// What the field is to hold, in fainter letters.
QLabel* makeHint(const QString& text, QWidget* parent);

} // namespace corvanta::linkage
