#include "manageWidget/ui/MaintainConfigPage.h"

#include "account/ui/AccountForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

MaintainConfigPage::MaintainConfigPage(const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent) {
    addAction(tr("重启设备"), tr("设备重启期间视频会中断，完成后自动恢复。"), tr("确定重启该设备?"),
              QStringLiteral("重启设备"), "maintainRestart");
    addAction(tr("恢复出厂设置"), tr("所有参数恢复为出厂值，设备随后重启。"),
              tr("确定将该设备恢复出厂设置?\n所有参数将丢失，无法撤销。"), QStringLiteral("恢复出厂设置"),
              "maintainReset");
    column()->addStretch(1);
}

void MaintainConfigPage::addAction(const QString& title, const QString& hint, const QString& question,
                                   const QString& operation, const char* objectName) {
    addSection(title);
    auto* const row = new QHBoxLayout;
    auto* const label = new QLabel(hint, this);
    label->setProperty("role", QStringLiteral("hint"));
    label->setWordWrap(true);
    row->addWidget(label, 1);
    QPushButton* const button = addButton(title, QLatin1String(objectName), {});
    button->disconnect();
    button->setEnabled(canWrite());
    connect(button, &QPushButton::clicked, this, [this, title, question, operation, button] {
        ask(question, title, [this, operation, button] {
            run(operation, {}, button, [this, operation](const QVariantMap&) {
                log(operation, {}); // the same words, as the log has them in every language
                corvanta::account::tell(tr("命令已发送，请稍候。"), this);
            });
        });
    });
    row->addWidget(button);
    column()->addLayout(row);
}
