#include "sensor/ui/PortDialog.h"

#include "account/ui/AccountForm.h"
#include "base/ui/Theme.h"
#include "sensor/Samples.h"
#include "sensor/ui/CalibrationDialog.h"
#include "sensor/ui/FieldForm.h"
#include "sensor/ui/SensorSend.h"
#include "sensor/ui/ThresholdForm.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace corvanta::sensor {
namespace {

constexpr int LongestName = 64;

QString textOf(const QVariantMap& port, const char* key) {
    const QVariant value = port.value(QLatin1String(key));
    const auto number = value.type() == QVariant::Double ? readNumber(value) : std::nullopt;
    return number ? numberText(*number) : value.toString();
}

QWidget* page(QWidget* content, QTabWidget* tabs) {
    auto* const page = new QWidget(tabs);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(3 * theme::Step, 3 * theme::Step, 3 * theme::Step, 3 * theme::Step);
    column->addWidget(content);
    column->addStretch(1);
    return page;
}

} // namespace

PortDialog::PortDialog(const AppContext& context, const Subject& subject, QWidget* parent)
    : FramedDialog(subject.isInput ? tr("采集输入") : tr("控制输出"), parent)
    , context_(context)
    , subject_(subject) {
    setObjectName(QStringLiteral("PortDialog"));
    setAccessibleName(windowTitle());
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("portTabs"));
    tabs->setAccessibleName(tr("采集输入与控制输出的设置"));
    tabs->addTab(page(makeGeneral(), tabs), tr("基本"));
    fields_ = new FieldForm(subject_.fields, subject_.port.value(QStringLiteral("params")).toMap(), this);
    if (!subject_.fields.isEmpty())
        tabs->addTab(page(fields_, tabs), tr("通信参数"));
    else
        fields_->hide();
    if (subject_.isInput) {
        tabs->addTab(page(makeScale(), tabs), tr("校准"));
        thresholds_ = new ThresholdForm(subject_.port, this);
        tabs->addTab(page(thresholds_, tabs), tr("阈值"));
    }
    body()->addWidget(tabs);
    connect(addButton(tr("确定"), QStringLiteral("portOk"), true), &QPushButton::clicked, this, &PortDialog::check);
    connect(addButton(tr("取消"), QStringLiteral("portCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
}

QWidget* PortDialog::makeGeneral() {
    auto* const general = new QWidget(this);
    QFormLayout* const form = account::makeForm();
    general->setLayout(form);
    form->setContentsMargins(0, 0, 0, 0);
    name_ = account::addField(*form, tr("名称"), tr("名称"), QStringLiteral("portName"));
    unit_ = account::addField(*form, tr("单位"), tr("单位"), QStringLiteral("portUnit"));
    extend_ = account::addField(*form, tr("附加信息"), tr("附加信息"), QStringLiteral("portExtend"));
    name_->setText(textOf(subject_.port, "name"));
    unit_->setText(textOf(subject_.port, "unit"));
    extend_->setText(textOf(subject_.port, "extend"));
    upload_ = new QCheckBox(tr("上传并保存数据记录"), general);
    upload_->setObjectName(QStringLiteral("portUpload"));
    upload_->setAccessibleName(upload_->text());
    upload_->setChecked(textOf(subject_.port, "isupload") == QLatin1String("1"));
    form->addRow(QString(), upload_);
    return general;
}

QWidget* PortDialog::makeScale() {
    auto* const scale = new QWidget(this);
    QFormLayout* const form = account::makeForm();
    scale->setLayout(form);
    form->setContentsMargins(0, 0, 0, 0);
    scale_ = account::addField(*form, tr("系数"), tr("系数"), QStringLiteral("portScale"));
    offset_ = account::addField(*form, tr("偏移"), tr("偏移"), QStringLiteral("portOffset"));
    scale_->setText(numberText(readNumber(subject_.port.value(QStringLiteral("scale"))).value_or(1)));
    offset_->setText(numberText(readNumber(subject_.port.value(QStringLiteral("offset"))).value_or(0)));
    auto* const helper = new QPushButton(tr("两点校准"), scale);
    helper->setObjectName(QStringLiteral("portCalibrate"));
    helper->setAccessibleName(tr("两点校准"));
    helper->setToolTip(tr("数值 = 原始值 × 系数 + 偏移"));
    helper->setAutoDefault(false);
    connect(helper, &QPushButton::clicked, this, &PortDialog::calibrate);
    form->addRow(QString(), helper);
    return scale;
}

void PortDialog::calibrate() {
    CalibrationDialog dialog(context_, subject_.ipncId, subject_.port.value(QStringLiteral("pid")).toInt(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    scale_->setText(numberText(dialog.result().scale));
    offset_->setText(numberText(dialog.result().offset));
}

void PortDialog::check() {
    std::optional<QString> problem;
    if (name_->text().trimmed().isEmpty() || name_->text().size() > LongestName)
        problem = tr("名称应为1到%1个字符!").arg(LongestName);
    if (!problem)
        problem = fields_->problem();
    if (!problem && scale_ != nullptr && readNumber(scale_->text().trimmed()).value_or(0) == 0)
        problem = tr("系数应为不等于0的数字!");
    if (!problem && offset_ != nullptr && !readNumber(offset_->text().trimmed()))
        problem = tr("偏移应为数字!");
    if (!problem && thresholds_ != nullptr)
        problem = thresholds_->problem();
    showProblem(problem.value_or(QString()));
    if (!problem)
        accept();
}

QVariantMap PortDialog::port() const {
    QVariantMap port = subject_.port;
    port.insert(QStringLiteral("name"), name_->text().trimmed());
    port.insert(QStringLiteral("unit"), unit_->text().trimmed());
    port.insert(QStringLiteral("extend"), extend_->text());
    port.insert(QStringLiteral("isupload"), upload_->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    port.insert(QStringLiteral("params"), fields_->values());
    if (subject_.isInput) {
        port.insert(QStringLiteral("scale"), readNumber(scale_->text().trimmed()).value_or(1));
        port.insert(QStringLiteral("offset"), readNumber(offset_->text().trimmed()).value_or(0));
        const QVariantMap thresholds = thresholds_->values();
        for (auto value = thresholds.begin(); value != thresholds.end(); ++value)
            port.insert(value.key(), value.value());
    }
    return port;
}

} // namespace corvanta::sensor
