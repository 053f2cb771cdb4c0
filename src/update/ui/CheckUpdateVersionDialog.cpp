#include "update/ui/CheckUpdateVersionDialog.h"

#include "base/Settings.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "update/UpdateDownload.h"
#include "update/Version.h"
#include "update/ui/UpdateProgressView.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace keys = corvanta::keys;
namespace theme = corvanta::theme;
namespace update = corvanta::update;

namespace {
constexpr int Width = 420; // px
} // namespace

CheckUpdateVersionDialog::CheckUpdateVersionDialog(const AppContext& context, update::UpdateDownload& download,
                                                   QWidget* parent)
    : FramedDialog(tr("检测更新"), parent)
    , context_(context)
    , download_(download)
    , newest_(new QLabel(this)) {
    setObjectName(QStringLiteral("CheckUpdateVersionDialog"));
    setAccessibleName(windowTitle());
    setMinimumWidth(Width);
    auto* const form = new QFormLayout;
    form->setHorizontalSpacing(3 * theme::Step);
    form->setVerticalSpacing(2 * theme::Step);
    const auto add = [this, form](const QString& name, QLabel* value, const QString& objectName) {
        value->setObjectName(objectName);
        value->setTextFormat(Qt::PlainText);
        value->setAccessibleName(name + value->text());
        form->addRow(name, value);
    };
    add(tr("当前版本："), new QLabel(update::versionText(), this), QStringLiteral("currentVersion"));
    add(tr("版本"), new QLabel(QString::number(update::BuiltInVersion), this), QStringLiteral("versionNumber"));
    add(tr("状态"), newest_, QStringLiteral("newestVersion"));
    body()->addLayout(form);
    body()->addWidget(new update::UpdateProgressView(download_, update::UpdateProgressView::Shape::Block, this));
    body()->addStretch(1);
    checkButton_ = addButton(tr("检测更新"), QStringLiteral("checkUpdate"), true);
    connect(addButton(tr("关闭"), QStringLiteral("closeUpdate"), false), &QPushButton::clicked, this,
            &CheckUpdateVersionDialog::reject);
    connect(checkButton_, &QPushButton::clicked, this, &CheckUpdateVersionDialog::check);
    connect(&check_.network(), &QNetworkAccessManager::finished, this, &CheckUpdateVersionDialog::replyFinished);
    connect(&check_, &update::VersionCheck::sigDone, this, &CheckUpdateVersionDialog::onDone);
    connect(&download_, &update::UpdateDownload::sigStateChanged, this, &CheckUpdateVersionDialog::showState);
    newest_->setText(download_.canInstall() ? tr("未检测") : update::packageManagerText());
    showState();
}

void CheckUpdateVersionDialog::showState() {
    checkButton_->setEnabled(download_.canInstall() && !check_.isRunning() &&
                             download_.state() == update::UpdateDownload::State::Idle);
    newest_->setAccessibleName(newest_->text());
}

void CheckUpdateVersionDialog::check() {
    const QString address = context_.settings.get(keys::UpdateServer).toString();
    if (address.trimmed().isEmpty()) {
        tell(tr("尚未设置更新服务器，请在“软件设置”的“软件更新”中填写地址!"));
        return;
    }
    if (!check_.start(update::UpdateServer(address))) {
        tell(update::noDescriptionText());
        return;
    }
    newest_->setText(tr("正在检测..."));
    showState();
}

void CheckUpdateVersionDialog::replyFinished(QNetworkReply* reply) {
    check_.take(reply);
}

void CheckUpdateVersionDialog::onDone(const update::CheckResult& result) {
    using State = update::CheckResult::State;
    switch (result.state) {
    case State::Failed:
        newest_->setText(tr("检测失败"));
        tell(result.problem);
        break;
    case State::UpToDate:
        newest_->setText(tr("已是最新版本"));
        tell(tr("当前已经是最新版本!"));
        break;
    case State::Newer:
        newest_->setText(tr("最新版本 %1").arg(result.description->version));
        TipDialog::offer(
            {.title = tr("提示"), .text = tr("检测到新版本!"), .accept = tr("后台更新"), .reject = tr("暂不更新")},
            this, {.accepted = [this, description = result.description] {
                download_.start(check_.server(), description);
            }});
        break;
    }
    showState();
}

void CheckUpdateVersionDialog::tell(const QString& text) {
    TipDialog::tell(tr("提示"), text, this);
}
