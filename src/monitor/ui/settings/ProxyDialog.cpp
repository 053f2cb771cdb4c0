#include "monitor/ui/settings/ProxyDialog.h"

#include "base/Settings.h"
#include "monitor/ui/settings/NetworkPage.h"
#include "monitor/ui/settings/SettingsLog.h"

#include <QPushButton>
#include <QVBoxLayout>

ProxyDialog::ProxyDialog(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("代理设置"), parent)
    , context_(context)
    , page_(new NetworkPage(this)) {
    setObjectName(QStringLiteral("ProxyDialog"));
    setAccessibleName(tr("代理设置"));
    setWindowModality(Qt::WindowModal);
    page_->load(context_.settings);
    page_->setMinimumWidth(420); // px
    body()->addWidget(page_, 1);
    auto* const ok = addButton(tr("确定"), QStringLiteral("proxyOk"), true);
    auto* const cancel = addButton(tr("取消"), QStringLiteral("proxyCancel"), false);
    connect(ok, &QPushButton::clicked, this, &ProxyDialog::save);
    connect(cancel, &QPushButton::clicked, this, &ProxyDialog::reject);
    connect(page_, &SettingsPage::sigEdited, this, [this] { showProblem(QString()); });
}

void ProxyDialog::save() {
    if (const auto problem = page_->check()) {
        showProblem(*problem);
        return;
    }
    const QStringList changed = page_->store(context_.settings);
    if (!changed.isEmpty()) {
        context_.settings.save();
        corvanta::settings::logChanges(context_, changed);
    }
    accept();
}
