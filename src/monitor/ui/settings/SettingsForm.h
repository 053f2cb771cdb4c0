#pragma once

#include <QString>

#include <utility>

class FileField;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class SettingsPage;
class QWidget;

/// Fills a settings page with rows of a label and a field, aligned alike on every page. Every field gets an object
/// name and an accessible name, and tells the page when the user changes it. Labels are plain texts.
class SettingsForm final {
public:
    /// Gives the page its layout.
    explicit SettingsForm(SettingsPage& page);

    void addSection(const QString& text);
    QLineEdit* addEdit(const QString& label, const QString& objectName, int longest);
    QCheckBox* addCheck(const QString& text, const QString& objectName);
    QComboBox* addCombo(const QString& label, const QString& objectName);
    /// `unit` stands behind the number.
    QSpinBox* addNumber(const QString& label, const QString& objectName, int least, int most, const QString& unit);
    /// A file to choose; `filter` as a file dialog takes it.
    FileField* addFile(const QString& label, const QString& objectName, const QString& filter);
    /// A check box that stands where a label would, and the file that belongs to it.
    std::pair<QCheckBox*, FileField*> addCheckedFile(const QString& text, const QString& objectName,
                                                     const QString& filter);
    /// A small explanation under the field before it.
    QLabel* addHint(const QString& text);
    /// Any widget beside the label; an empty label leaves its place free. `isWide`: as wide as the page.
    void addRow(const QString& label, QWidget* field, bool isWide);
    /// Any widget over both columns; `takesRoom`: with what height is left.
    void addWide(QWidget* widget, bool takesRoom);
    /// Ends the page: the rows stand at its top.
    void addRest();

private:
    FileField* makeFile(const QString& label, const QString& objectName, const QString& filter);
    void name(QWidget& field, const QString& label, const QString& objectName) const;

    SettingsPage& page_;
    QGridLayout* grid_;
    int row_ = 0;
};
