#include "sensor/ui/ThresholdForm.h"

#include "base/ui/FaintHint.h"
#include "base/ui/Theme.h"
#include "sensor/Samples.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace corvanta::sensor {
namespace {

QString textOf(const std::optional<double>& value) {
    return value ? QString::number(*value, 'g', 10) : QString();
}

QVariant boundOf(const QLineEdit& edit) {
    const auto value = readNumber(edit.text().trimmed());
    return value ? QVariant(*value) : QVariant::fromValue(nullptr);
}

} // namespace

ThresholdForm::ThresholdForm(const QVariantMap& port, QWidget* parent)
    : QWidget(parent) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2 * theme::Step);
    const auto makeEdit = [this](const QString& objectName, const QString& name, const QString& text) {
        auto* const edit = new QLineEdit(text, this);
        edit->setObjectName(objectName);
        edit->setAccessibleName(name);
        edit->setPlaceholderText(tr("无"));
        faintHint(*edit);
        return edit;
    };
    grid->addWidget(new QLabel(tr("上限"), this), 0, 1);
    grid->addWidget(new QLabel(tr("下限"), this), 0, 2);
    const auto known = thresholdsOf(port);
    for (int i = 0; i < Levels; ++i) {
        ThresholdLevel bounds;
        for (const ThresholdLevel& one : known)
            bounds = one.level == i + 1 ? one : bounds;
        const auto place = static_cast<std::size_t>(i);
        grid->addWidget(new QLabel(tr("%1级阈值").arg(i + 1), this), i + 1, 0);
        highs_[place] =
            makeEdit(QStringLiteral("high%1").arg(i + 1), tr("%1级阈值上限").arg(i + 1), textOf(bounds.high));
        lows_[place] =
            makeEdit(QStringLiteral("low%1").arg(i + 1), tr("%1级阈值下限").arg(i + 1), textOf(bounds.low));
        grid->addWidget(highs_[place], i + 1, 1);
        grid->addWidget(lows_[place], i + 1, 2);
    }
    grid->addWidget(new QLabel(tr("回差"), this), Levels + 1, 0);
    hysteresis_ = makeEdit(QStringLiteral("hysteresis"), tr("回差"),
                           textOf(readNumber(port.value(QStringLiteral("hysteresis"), 0))));
    hysteresis_->setToolTip(tr("数值回到阈值以内超过回差后，报警才会恢复"));
    grid->addWidget(hysteresis_, Levels + 1, 1);
}

QVariantMap ThresholdForm::values() const {
    QVariantList levels;
    for (int i = 0; i < Levels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QVariant high = boundOf(*highs_[place]);
        const QVariant low = boundOf(*lows_[place]);
        if (!high.isNull() || !low.isNull())
            levels += QVariantMap{
                {QStringLiteral("level"), i + 1}, {QStringLiteral("high"), high}, {QStringLiteral("low"), low}};
    }
    return {{QStringLiteral("thresholds"), levels},
            {QStringLiteral("hysteresis"), readNumber(hysteresis_->text().trimmed()).value_or(0)}};
}

std::optional<QString> ThresholdForm::problem() const {
    for (int i = 0; i < Levels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        for (const QLineEdit* const edit : {highs_[place], lows_[place]}) {
            if (!edit->text().trimmed().isEmpty() && !readNumber(edit->text().trimmed()))
                return tr("%1应为数字!").arg(edit->accessibleName());
        }
        const auto high = readNumber(highs_[place]->text().trimmed());
        const auto low = readNumber(lows_[place]->text().trimmed());
        if (high && low && *high <= *low)
            return tr("%1级阈值的上限应大于下限!").arg(i + 1);
    }
    const QString hysteresis = hysteresis_->text().trimmed();
    if (!hysteresis.isEmpty() && readNumber(hysteresis).value_or(-1) < 0)
        return tr("回差应为不小于0的数字!");
    return std::nullopt;
}

} // namespace corvanta::sensor
