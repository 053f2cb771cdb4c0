#include "monitor/ui/settings/SettingsForm.h"

#include "base/ui/FaintHint.h"
#include "base/ui/Theme.h"
#include "monitor/ui/settings/FileField.h"
#include "monitor/ui/settings/SettingsPage.h"
#include "monitor/ui/settings/WheelGuard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVariant>

#include <memory>

namespace theme = corvanta::theme;

namespace {

constexpr int LabelWidth = 120; // px
constexpr int LineHeight = 30;  // px, of an edit
constexpr int ShortField = 180; // px

QLabel* plainLabel(const QString& text, const char* role, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("role", QLatin1String(role));
    return label;
}

} // namespace

SettingsForm::SettingsForm(SettingsPage& page)
    : page_(page)
    , grid_(std::make_unique<QGridLayout>(&page).release()) { // the page owns its layout
    grid_->setContentsMargins(theme::Step, 0, 3 * theme::Step, 0);
    grid_->setHorizontalSpacing(3 * theme::Step);
    grid_->setVerticalSpacing(2 * theme::Step);
    grid_->setColumnMinimumWidth(0, LabelWidth);
    grid_->setColumnStretch(1, 1);
}

void SettingsForm::name(QWidget& field, const QString& label, const QString& objectName) const {
    field.setObjectName(objectName);
    field.setAccessibleName(label);
}

void SettingsForm::addSection(const QString& text) {
    if (row_ > 0)
        grid_->setRowMinimumHeight(row_++, theme::Step);
    grid_->addWidget(plainLabel(text, "section", &page_), row_++, 0, 1, 2);
}

void SettingsForm::addRow(const QString& label, QWidget* field, bool isWide) {
    if (!label.isEmpty()) {
        QLabel* const text = plainLabel(label, "label", &page_);
        text->setMinimumHeight(LineHeight);
        grid_->addWidget(text, row_, 0, Qt::AlignRight | Qt::AlignTop);
    }
    grid_->addWidget(field, row_++, 1, isWide ? Qt::Alignment() : Qt::AlignLeft);
}

QLineEdit* SettingsForm::addEdit(const QString& label, const QString& objectName, int longest) {
    auto* const edit = new QLineEdit(&page_);
    name(*edit, label, objectName);
    edit->setMaxLength(longest);
    corvanta::faintHint(*edit);
    QObject::connect(edit, &QLineEdit::textChanged, &page_, &SettingsPage::sigEdited);
    addRow(label, edit, true);
    return edit;
}

QCheckBox* SettingsForm::addCheck(const QString& text, const QString& objectName) {
    auto* const box = new QCheckBox(text, &page_);
    name(*box, text, objectName);
    QObject::connect(box, &QCheckBox::toggled, &page_, &SettingsPage::sigEdited);
    grid_->addWidget(box, row_++, 1, Qt::AlignLeft);
    return box;
}

QComboBox* SettingsForm::addCombo(const QString& label, const QString& objectName) {
    auto* const combo = new QComboBox(&page_);
    name(*combo, label, objectName);
    combo->setMinimumWidth(ShortField);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    guardWheel(*combo);
    QObject::connect(combo, &QComboBox::currentTextChanged, &page_, &SettingsPage::sigEdited);
    QObject::connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), &page_, &SettingsPage::sigEdited);
    addRow(label, combo, false);
    return combo;
}

QSpinBox* SettingsForm::addNumber(const QString& label, const QString& objectName, int least, int most,
                                  const QString& unit) {
    auto* const number = new QSpinBox(&page_);
    name(*number, label, objectName);
    number->setRange(least, most);
    number->setSuffix(QLatin1Char(' ') + unit);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number->setMinimumWidth(ShortField);
    guardWheel(*number);
    QObject::connect(number, qOverload<int>(&QSpinBox::valueChanged), &page_, &SettingsPage::sigEdited);
    addRow(label, number, false);
    return number;
}

FileField* SettingsForm::makeFile(const QString& label, const QString& objectName, const QString& filter) {
    auto* const file = new FileField(label, objectName, filter, &page_);
    QObject::connect(file, &FileField::sigPathChanged, &page_, &SettingsPage::sigEdited);
    return file;
}

FileField* SettingsForm::addFile(const QString& label, const QString& objectName, const QString& filter) {
    FileField* const file = makeFile(label, objectName, filter);
    addRow(label, file, true);
    return file;
}

std::pair<QCheckBox*, FileField*> SettingsForm::addCheckedFile(const QString& text, const QString& objectName,
                                                               const QString& filter) {
    auto* const box = new QCheckBox(text, &page_);
    name(*box, text, objectName + QStringLiteral("Switch"));
    box->setMinimumHeight(LineHeight);
    QObject::connect(box, &QCheckBox::toggled, &page_, &SettingsPage::sigEdited);
    grid_->addWidget(box, row_, 0);
    FileField* const file = makeFile(text, objectName, filter);
    addRow(QString(), file, true);
    return {box, file};
}

QLabel* SettingsForm::addHint(const QString& text) {
    QLabel* const hint = plainLabel(text, "hint", &page_);
    hint->setWordWrap(true);
    grid_->addWidget(hint, row_++, 1);
    return hint;
}

void SettingsForm::addWide(QWidget* widget, bool takesRoom) {
    grid_->setRowStretch(row_, takesRoom ? 1 : 0);
    grid_->addWidget(widget, row_++, 0, 1, 2);
}

void SettingsForm::addRest() {
    grid_->setRowStretch(row_, 1);
}
