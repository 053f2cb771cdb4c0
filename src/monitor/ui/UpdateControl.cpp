#include "monitor/ui/UpdateControl.h"

#include "base/OperationLog.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/TipDialog.h"
#include "monitor/ui/TopBar.h"
#include "update/ui/CheckUpdateVersionDialog.h"
#include "update/ui/UpdateProgressView.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QEvent>
#include <QTimer>
#include <QVariant>

#include <utility>

namespace keys = corvanta::keys;
namespace update = corvanta::update;

UpdateControl::UpdateControl(const AppContext& context, TopBar& bar, QWidget& window)
    : QObject(&window)
    , context_(context)
    , window_(window)
    , download_(QCoreApplication::applicationDirPath(), update::DownloadFolder::ofThisComputer()) {
    connect(&bar, &TopBar::sigUpdate, this, &UpdateControl::openDialog);
    connect(&context_.versionCheck.network(), &QNetworkAccessManager::finished, this, &UpdateControl::onReply);
    connect(&context_.versionCheck, &update::VersionCheck::sigDone, this, &UpdateControl::onChecked);
    connect(&download_, &update::UpdateDownload::sigNothingToDo, this,
            [this] { emit sigMessage(tr("没有需要更新的文件")); });
    connect(&download_, &update::UpdateDownload::sigFailed, this,
            [this](const QString& text) { TipDialog::tell(tr("提示"), text, &window_); });
    connect(&download_, &update::UpdateDownload::sigReady, this, &UpdateControl::offerInstallation);
    connect(&download_, &update::UpdateDownload::sigHandedOver, this, &UpdateControl::sigLeave);
    window_.installEventFilter(this);
}

UpdateControl::~UpdateControl() = default;

QWidget* UpdateControl::makeProgressView(QWidget* parent) {
    auto* const view = new update::UpdateProgressView(download_, update::UpdateProgressView::Shape::Strip, parent);
    view->setProperty("page", QStringLiteral("dark"));
    return view;
}

void UpdateControl::openDialog() {
    if (dialog_ == nullptr) {
        dialog_ = new CheckUpdateVersionDialog(context_, download_, &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
    }
    dialog_->open();
}

bool UpdateControl::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Show && !std::exchange(hasChecked_, true))
        QTimer::singleShot(0, this, &UpdateControl::checkAtStart);
    return QObject::eventFilter(watched, event);
}

void UpdateControl::checkAtStart() {
    const QString address = context_.settings.get(keys::UpdateServer).toString();
    if (address.trimmed().isEmpty() || !download_.canInstall())
        return; // nobody wants to be told of updates, or they come another way
    if (!context_.versionCheck.start(update::UpdateServer(address)))
        TipDialog::tell(tr("提示"), update::noDescriptionText(), &window_);
}

void UpdateControl::onReply(QNetworkReply* reply) {
    context_.versionCheck.take(reply);
}

void UpdateControl::onChecked(const update::CheckResult& result) {
    using State = update::CheckResult::State;
    if (result.state == State::Failed) {
        TipDialog::tell(tr("提示"), result.problem, &window_);
        return;
    }
    const int version = result.description->version;
    if (result.state == State::UpToDate || version == context_.settings.get(keys::IgnoredVersion).toInt())
        return;
    TipDialog::offer(
        {.title = tr("提示"), .text = tr("检测到新版本!"), .accept = tr("后台更新"), .reject = tr("忽略该版本")},
        &window_,
        {.accepted = [this, description =
                                result.description] { download_.start(context_.versionCheck.server(), description); },
         .rejected = [this, version] { ignore(version); },
         .closed =
             [] {
                 qDebug() << "asked about the new version at the next start again";
             }});
}

void UpdateControl::ignore(int version) {
    context_.settings.set(keys::IgnoredVersion, version);
    context_.settings.save();
}

void UpdateControl::offerInstallation() {
    TipDialog::offer({.title = tr("提示"), .text = tr("下载完成!"), .accept = tr("现在安装"), .reject = tr("取消")},
                     &window_,
                     {.accepted =
                          [this] {
                              context_.operationLog.addOperateLog(
                                  context_.gateway.phoneId(), QDateTime::currentDateTime(),
                                  QStringLiteral("软件更新"), QStringLiteral("安装新版本"), QString());
                              download_.install();
                          },
                      .rejected =
                          [this] {
                              download_.cancel();
                          }});
}
