#include "sensor/ui/WriteDialog.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "manageWidget/ui/ManageSend.h"
#include "sensor/Samples.h"
#include "sensor/ui/SensorSend.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::sensor {

WriteDialog::WriteDialog(const AppContext& context, const Output& output, QWidget* parent)
    : FramedDialog(tr("立即写入"), parent)
    , context_(context)
    , output_(output) {
    setObjectName(QStringLiteral("WriteDialog"));
    setAccessibleName(tr("立即写入"));
    auto* const name = new QLabel(output.name, this);
    name->setTextFormat(Qt::PlainText);
    body()->addWidget(name);
    QFormLayout* const form = account::makeForm();
    value_ = account::addField(*form, output.unit.isEmpty() ? tr("数值") : tr("数值（%1）").arg(output.unit),
                               tr("数值"), QStringLiteral("writeValue"));
    body()->addLayout(form);
    write_ = addButton(tr("写入"), QStringLiteral("writeOk"), true);
    connect(write_, &QPushButton::clicked, this, &WriteDialog::write);
    connect(addButton(tr("取消"), QStringLiteral("writeCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
}

void WriteDialog::write() {
    const auto value = readNumber(value_->text().trimmed());
    showProblem(value ? QString() : tr("数值应为数字!"));
    if (!value)
        return;
    const QVariantMap command{{QStringLiteral("pid"), output_.pid}, {QStringLiteral("value"), *value}};
    manage::send(
        context_, this,
        {.json = requests::deviceRequest(QStringLiteral("写入控制输出"), {{QStringLiteral("ipncid"), output_.ipncId},
                                                                          {QStringLiteral("sensorwrite"), command}}),
         .busy = write_,
         .done = [this, value = *value](const QVariantMap&) {
             logChange(context_, QStringLiteral("写入控制输出"),
                       QStringLiteral("%1 %2 = %3").arg(output_.ipncId, output_.name, numberText(value)));
             accept();
         }});
}

} // namespace corvanta::sensor
