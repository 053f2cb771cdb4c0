#include "manageWidget/ui/ParameterForm.h"

#include "account/ui/AccountForm.h"
#include "base/ui/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;
using corvanta::manage::Parameter;
using corvanta::manage::ParameterKind;
using corvanta::manage::ParameterPage;

ParameterForm::ParameterForm(ParameterPage page, bool hasSliders, QWidget* parent)
    : QWidget(parent)
    , parameters_(corvanta::manage::parametersOf(page)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    QFormLayout* const form = corvanta::account::makeForm();
    column->addLayout(form);
    column->addStretch(1);
    QString section;
    QHBoxLayout* flags = nullptr; // those that follow one another stand side by side
    for (const Parameter& parameter : parameters_) {
        const bool isFlag = parameter.kind == ParameterKind::Flag;
        const bool begins = parameter.sectionText() != section;
        if (begins) {
            section = parameter.sectionText();
            auto* const label = new QLabel(section, this);
            label->setProperty("role", QStringLiteral("section"));
            form->addRow(label);
        }
        if (begins || !isFlag)
            flags = nullptr;
        if (isFlag && flags == nullptr) {
            flags = new QHBoxLayout; // the form owns it
            flags->setSpacing(6 * theme::Step);
            flags->addStretch(1);
            form->addRow(QString(), flags);
        }
        QWidget* const field = addField(parameter, hasSliders);
        if (isFlag)
            flags->insertWidget(flags->count() - 1, field);
        else
            addRow(parameter, field, *form);
    }
    setValues({});
}

QWidget* ParameterForm::addField(const Parameter& parameter, bool hasSliders) {
    QWidget* const field = makeField(parameter, hasSliders);
    field->setObjectName(parameter.key());
    field->setAccessibleName(parameter.fullText());
    fields_.insert(parameter.key(), field);
    return field;
}

void ParameterForm::addRow(const Parameter& parameter, QWidget* field, QFormLayout& form) {
    auto* const slider = qobject_cast<QSlider*>(field);
    if (slider == nullptr) {
        form.addRow(parameter.labelText(), field);
        return;
    }
    auto* const row = new QHBoxLayout;
    auto* const number = new QLabel(this);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number->setMinimumWidth(32); // px
    connect(slider, &QSlider::valueChanged, number, [number](int value) { number->setNum(value); });
    number->setNum(slider->value());
    row->addWidget(slider, 1);
    row->addWidget(number);
    form.addRow(parameter.labelText(), row);
}

QWidget* ParameterForm::makeField(const Parameter& parameter, bool hasSliders) {
    switch (parameter.kind) {
    case ParameterKind::Flag: {
        auto* const check = new QCheckBox(parameter.labelText(), this);
        connect(check, &QCheckBox::toggled, this, &ParameterForm::sigEdited);
        return check;
    }
    case ParameterKind::Choice: {
        auto* const combo = new QComboBox(this);
        combo->addItems(parameter.choiceTexts());
        connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), this, &ParameterForm::sigEdited);
        return combo;
    }
    case ParameterKind::Number: {
        if (hasSliders) {
            auto* const slider = new QSlider(Qt::Horizontal, this);
            slider->setRange(parameter.least, parameter.most);
            connect(slider, &QSlider::valueChanged, this, &ParameterForm::sigEdited);
            return slider;
        }
        auto* const number = new QSpinBox(this);
        number->setRange(parameter.least, parameter.most);
        if (!parameter.unitText().isEmpty())
            number->setSuffix(QLatin1Char(' ') + parameter.unitText());
        connect(number, qOverload<int>(&QSpinBox::valueChanged), this, &ParameterForm::sigEdited);
        return number;
    }
    case ParameterKind::Text:
    case ParameterKind::Secret:
        break;
    }
    auto* const edit = new QLineEdit(this);
    if (parameter.kind == ParameterKind::Secret)
        edit->setEchoMode(QLineEdit::Password);
    connect(edit, &QLineEdit::textEdited, this, &ParameterForm::sigEdited);
    return edit;
}

QStringList ParameterForm::names() const {
    QStringList names;
    for (const Parameter& parameter : parameters_)
        names += parameter.key();
    return names;
}

void ParameterForm::setValue(QWidget& field, const QVariant& value) {
    const QSignalBlocker blocker(&field);
    if (auto* const check = qobject_cast<QCheckBox*>(&field))
        check->setChecked(value.toInt() != 0);
    else if (auto* const combo = qobject_cast<QComboBox*>(&field))
        combo->setCurrentIndex(value.toInt());
    else if (auto* const number = qobject_cast<QSpinBox*>(&field))
        number->setValue(value.toInt());
    else if (auto* const edit = qobject_cast<QLineEdit*>(&field))
        edit->setText(value.toString());
}

QVariant ParameterForm::value(const QWidget& field) {
    if (const auto* const check = qobject_cast<const QCheckBox*>(&field))
        return check->isChecked() ? 1 : 0;
    if (const auto* const combo = qobject_cast<const QComboBox*>(&field))
        return combo->currentIndex();
    if (const auto* const number = qobject_cast<const QSpinBox*>(&field))
        return number->value();
    if (const auto* const slider = qobject_cast<const QSlider*>(&field))
        return slider->value();
    return static_cast<const QLineEdit&>(field).text();
}

void ParameterForm::setValues(const QVariantMap& values) {
    known_.clear();
    const QSignalBlocker blocker(this); // none of this is the user's
    for (const Parameter& parameter : parameters_) {
        QWidget* const field = fields_.value(parameter.key());
        const QVariant value = values.value(parameter.key());
        if (value.isValid() && !value.isNull()) {
            known_ += parameter.key();
            if (auto* const slider = qobject_cast<QSlider*>(field))
                slider->setValue(value.toInt()); // its number follows
            else
                setValue(*field, value);
        }
    }
    setWritable(writable_);
}

QVariantMap ParameterForm::values() const {
    QVariantMap values;
    for (const QString& name : known_)
        values.insert(name, value(*fields_.value(name)));
    return values;
}

void ParameterForm::setWritable(bool on) {
    writable_ = on;
    for (auto field = fields_.begin(); field != fields_.end(); ++field)
        field.value()->setEnabled(on && known_.contains(field.key()));
}
