#include "sensor/ui/ThresholdDialog.h"

#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "manageWidget/ui/ManageSend.h"
#include "sensor/ui/SensorSend.h"
#include "sensor/ui/ThresholdForm.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::sensor {

ThresholdDialog::ThresholdDialog(const AppContext& context, const InputRecord& input, QWidget* parent)
    : FramedDialog(tr("阈值设置"), parent)
    , context_(context)
    , input_(input) {
    setObjectName(QStringLiteral("ThresholdDialog"));
    setAccessibleName(tr("阈值设置"));
    auto* const name =
        new QLabel(input.unit.isEmpty() ? input.path() : tr("%1（%2）").arg(input.path(), input.unit), this);
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    body()->addWidget(name);
    form_ = new ThresholdForm(input.port, this);
    body()->addWidget(form_);
    save_ = addButton(tr("保存"), QStringLiteral("thresholdSave"), true);
    connect(save_, &QPushButton::clicked, this, &ThresholdDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("thresholdCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
}

void ThresholdDialog::save() {
    if (const auto problem = form_->problem()) {
        showProblem(*problem);
        return;
    }
    showProblem({});
    const QVariantMap values = form_->values();
    manage::send(
        context_, this,
        {.json = requests::accountRequest(QStringLiteral("阈值设置"), {{QStringLiteral("ipncid"), input_.ipncId},
                                                                       {QStringLiteral("pid"), input_.pid},
                                                                       {QStringLiteral("input"), values}}),
         .busy = save_,
         .done = [this, values](const QVariantMap&) {
             logChange(context_, QStringLiteral("阈值设置"),
                       input_.path() + QLatin1Char(' ') + QString::fromStdString(json::toText(values)));
             accept();
         }});
}

} // namespace corvanta::sensor
