#include "linkage/ui/LinkageForm.h"

#include "base/ui/FaintHint.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVariant>

namespace corvanta::linkage {
namespace {
constexpr int LongestNumber = 9; // digits
} // namespace

QComboBox* makeCombo(const QString& name, const QString& objectName, QWidget* parent) {
    auto* const combo = new QComboBox(parent);
    combo->setObjectName(objectName);
    combo->setAccessibleName(name);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(6);
    return combo;
}

QComboBox* addCombo(QFormLayout& form, const QString& label, const QString& objectName) {
    QComboBox* const combo = makeCombo(label, objectName, nullptr); // the form's owner owns it
    combo->setMinimumWidth(240);                                    // px
    form.addRow(label, combo);
    return combo;
}

void fill(QComboBox& combo, const Words& words) {
    combo.clear();
    for (const Word& word : words)
        combo.addItem(word.text, word.code);
}

QLineEdit* makeInterval(const QString& objectName, QWidget* parent) {
    auto* const edit = new QLineEdit(parent);
    edit->setObjectName(objectName);
    edit->setAccessibleName(QCoreApplication::translate("LinkageForm", "执行时间间隔"));
    edit->setPlaceholderText(QCoreApplication::translate("LinkageForm", "至少100ms"));
    edit->setMaxLength(LongestNumber);
    faintHint(*edit);
    return edit;
}

QLabel* makeHint(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("role", QStringLiteral("hint"));
    return label;
}

} // namespace corvanta::linkage
