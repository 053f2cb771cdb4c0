#include "sensor/ui/FieldForm.h"

#include "account/ui/AccountForm.h"
#include "sensor/Samples.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace corvanta::sensor {
namespace {

bool fitsSpinBox(const Field& field) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return field.kind == Field::Kind::Int && field.low && field.high && *field.low >= least && *field.high <= most;
}

QString textOf(const QVariant& value) {
    const auto number = value.type() == QVariant::Double ? readNumber(value) : std::nullopt;
    return number ? QString::number(*number, 'g', 10) : value.toString();
}

} // namespace

FieldForm::FieldForm(const QVector<Field>& fields, const QVariantMap& values, QWidget* parent)
    : QWidget(parent)
    , fields_(fields)
    , original_(values)
    , form_(account::makeForm()) {
    setLayout(form_);
    form_->setContentsMargins(0, 0, 0, 0);
    for (const Field& field : fields_) {
        QWidget* const entry = makeEntry(field);
        entry->setObjectName(QStringLiteral("field_") + field.key);
        entry->setAccessibleName(field.name);
        entries_.insert(field.key, entry);
        form_->addRow(field.name, entry);
        if (auto* const label = qobject_cast<QLabel*>(form_->labelForField(entry)))
            label->setTextFormat(Qt::PlainText);
    }
    showWhatBelongs();
}

QWidget* FieldForm::makeEntry(const Field& field) {
    const QVariant value = original_.value(field.key, field.initial);
    const auto edited = [this] {
        showWhatBelongs();
        emit sigEdited();
    };
    if (field.kind == Field::Kind::Choice) {
        auto* const choice = new QComboBox(this);
        for (const Field::Option& option : field.choices)
            choice->addItem(option.name, option.value);
        for (int i = 0; i < field.choices.size(); ++i) {
            if (field.choices[i].value.toString() == value.toString())
                choice->setCurrentIndex(i);
        }
        connect(choice, qOverload<int>(&QComboBox::currentIndexChanged), this, edited);
        return choice;
    }
    if (fitsSpinBox(field)) {
        auto* const number = new QSpinBox(this);
        number->setRange(static_cast<int>(std::ceil(*field.low)), static_cast<int>(std::floor(*field.high)));
        number->setValue(value.toInt());
        connect(number, qOverload<int>(&QSpinBox::valueChanged), this, edited);
        return number;
    }
    auto* const edit = new QLineEdit(textOf(value), this);
    if (field.kind == Field::Kind::Secret)
        edit->setEchoMode(QLineEdit::Password);
    connect(edit, &QLineEdit::textEdited, this, edited);
    return edit;
}

QVariant FieldForm::valueOf(const Field& field) const {
    const QWidget* const entry = entries_.value(field.key);
    if (const auto* const choice = qobject_cast<const QComboBox*>(entry))
        return choice->currentData();
    if (const auto* const number = qobject_cast<const QSpinBox*>(entry))
        return number->value();
    const QString text = static_cast<const QLineEdit*>(entry)->text();
    const bool isNumber = field.kind == Field::Kind::Int || field.kind == Field::Kind::Real;
    const auto number = isNumber ? readNumber(text.trimmed()) : std::nullopt;
    if (!number)
        return text;
    const bool isWhole = field.kind == Field::Kind::Int && *number == std::floor(*number);
    return isWhole ? QVariant(static_cast<qlonglong>(*number)) : QVariant(*number);
}

QVariantMap FieldForm::values() const {
    QVariantMap values = original_;
    for (const Field& field : fields_)
        values.insert(field.key, valueOf(field));
    return values;
}

std::optional<QString> FieldForm::problem() const {
    const QVariantMap all = values();
    for (const Field& field : fields_) {
        if (!field.isShown(all))
            continue;
        if (auto problem = field.problem(all.value(field.key)))
            return problem;
    }
    return std::nullopt;
}

void FieldForm::showWhatBelongs() {
    const QVariantMap all = values();
    for (const Field& field : fields_) {
        QWidget* const entry = entries_.value(field.key);
        const bool isShown = field.isShown(all);
        entry->setVisible(isShown);
        if (QWidget* const label = form_->labelForField(entry))
            label->setVisible(isShown);
    }
}

} // namespace corvanta::sensor
