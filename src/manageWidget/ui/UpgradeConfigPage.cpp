#include "manageWidget/ui/UpgradeConfigPage.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "base/SizeText.h"
#include "base/ui/FileChooser.h"
#include "manageWidget/FlowRequest.h"
#include "manageWidget/SdFiles.h"
#include "manageWidget/ui/ManageSend.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace account = corvanta::account;
namespace manage = corvanta::manage;
namespace requests = corvanta::requests;

namespace {
constexpr int WatchEvery = 1000; // ms
constexpr int MostSilent = 120;  // readings
constexpr int Whole = 100;       // %
} // namespace

UpgradeConfigPage::UpgradeConfigPage(const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent)
    , sending_(new FlowRequest(target.context.gateway, 0, this)) {
    addSection(tr("版本"));
    QFormLayout* const form = account::makeForm();
    installed_ = addValue(*form, tr("当前版本"), QStringLiteral("upgradeInstalled"));
    latest_ = addValue(*form, tr("最新版本"), QStringLiteral("upgradeLatest"));
    notes_ = addValue(*form, tr("更新说明"), QStringLiteral("upgradeNotes"));
    column()->addLayout(form);
    auto* const row = new QHBoxLayout;
    row->addStretch(1);
    check_ = addButton(tr("检查新版本"), QStringLiteral("upgradeCheck"), [this] { askLatest(); });
    install_ = addButton(tr("升级到最新版本"), QStringLiteral("upgradeInstall"), [this] {
        ask(tr("确定升级到%1?\n升级期间请勿断电。").arg(newest_), tr("升级"), [this] {
            upgrade({{QStringLiteral("softwareversion"), newest_}}, newest_);
        });
    });
    row->addWidget(check_);
    row->addWidget(install_);
    column()->addLayout(row);
    addSection(tr("从文件升级"));
    auto* const files = new QHBoxLayout;
    file_ = new QLineEdit(this);
    file_->setObjectName(QStringLiteral("upgradeFile"));
    file_->setAccessibleName(tr("升级文件"));
    file_->setReadOnly(true);
    choose_ = addButton(tr("选择文件"), QStringLiteral("upgradeChoose"), [this] { chooseFile(); });
    upload_ = addButton(tr("上传并升级"), QStringLiteral("upgradeUpload"), [this] {
        ask(tr("确定用该文件升级?\n升级期间请勿断电。"), tr("升级"), [this] { upload(); });
    });
    files->addWidget(file_, 1);
    files->addWidget(choose_);
    files->addWidget(upload_);
    column()->addLayout(files);
    auto* const progress = new QHBoxLayout;
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("upgradeBar"));
    bar_->setAccessibleName(tr("升级进度"));
    bar_->setTextVisible(false);
    progressText_ = new QLabel(this);
    progressText_->setObjectName(QStringLiteral("upgradeText"));
    progressText_->setTextFormat(Qt::PlainText);
    cancel_ = addButton(tr("取消上传"), QStringLiteral("upgradeCancel"), [this] {
        sending_->cancel();
        progressText_->setText(tr("已取消"));
        showButtons();
    });
    progress->addWidget(bar_, 1);
    progress->addWidget(progressText_);
    progress->addWidget(cancel_);
    column()->addLayout(progress);
    column()->addStretch(1);
    watch_.setInterval(WatchEvery);
    connect(&watch_, &QTimer::timeout, this, &UpgradeConfigPage::watch);
    connect(sending_, &FlowRequest::sigProgress, this, [this](qint64 done, qint64 total) {
        bar_->setValue(total > 0 ? static_cast<int>(done * Whole / total) : 0);
        progressText_->setText(tr("正在上传 %1").arg(corvanta::sizeText(done)));
    });
    connect(sending_, &FlowRequest::sigDone, this, [this] {
        upgrade({{QStringLiteral("uploaded"), 1}}, QFileInfo(file_->text()).fileName());
    });
    connect(sending_, &FlowRequest::sigFailed, this, [this](const QString& text) {
        progressText_->setText(tr("上传失败"));
        account::tell(text, this);
        showButtons();
    });
    showButtons();
}

void UpgradeConfigPage::showButtons() {
    const bool isIdle = !sending_->isRunning() && !upgrading_;
    check_->setEnabled(target().isOnline && isIdle);
    install_->setEnabled(canWrite() && isIdle && !newest_.isEmpty());
    choose_->setEnabled(canWrite() && isIdle);
    upload_->setEnabled(canWrite() && isIdle && !file_->text().isEmpty());
    cancel_->setVisible(sending_->isRunning());
    bar_->setVisible(!progressText_->text().isEmpty());
}

void UpgradeConfigPage::read() {
    readNames({QStringLiteral("softwareversion"), QStringLiteral("upgradestate")}, [this](const QVariantMap& values) {
        installed_->setText(values.value(QStringLiteral("softwareversion")).toString());
        showState(values.value(QStringLiteral("upgradestate")).toMap());
    });
}

void UpgradeConfigPage::askLatest() {
    run(QStringLiteral("获取设备最新版本信息"), {}, check_, [this](const QVariantMap& resp) {
        const QString version = resp.value(QStringLiteral("softwareversion")).toString();
        const bool isNewer = !version.isEmpty() && version != installed_->text();
        newest_ = isNewer ? version : QString();
        latest_->setText(isNewer
                             ? QStringLiteral("%1  (%2)")
                                   .arg(version, corvanta::sizeText(resp.value(QStringLiteral("size")).toLongLong()))
                             : tr("已是最新版本"));
        notes_->setText(resp.value(QStringLiteral("text")).toString());
        showButtons();
    });
}

void UpgradeConfigPage::chooseFile() {
    const QString path = ::chooseFile(this, tr("选择升级文件"), manage::documentsFolder(), tr("所有文件 (*)"));
    if (!path.isEmpty())
        file_->setText(QDir::toNativeSeparators(path));
    showButtons();
}

void UpgradeConfigPage::upload() {
    bar_->setValue(0);
    progressText_->setText(tr("正在上传"));
    sending_->start(requests::deviceRequest(
        QStringLiteral("上传摄像机升级文件"),
        {{QStringLiteral("ipncid"), target().ipncId},
         {QStringLiteral("path"), QFileInfo(QDir::fromNativeSeparators(file_->text())).absoluteFilePath()}}));
    showButtons();
}

void UpgradeConfigPage::upgrade(const QVariantMap& from, const QString& detail) {
    run(QStringLiteral("设置设备升级"), {{QStringLiteral("setcmds"), QVariantMap{{QStringLiteral("upgrade"), from}}}},
        install_, [this, detail](const QVariantMap&) {
            log(QStringLiteral("升级设备"), detail);
            upgrading_ = true;
            silent_ = 0;
            watch_.start();
            showButtons();
        });
}

void UpgradeConfigPage::watch() {
    const std::string json =
        requests::deviceRequest(QStringLiteral("获取设备升级状态"), {{QStringLiteral("ipncid"), target().ipncId}});
    target().context.gateway.request(json, this, [this](const QVariantMap& reply) {
        if (!upgrading_)
            return;
        if (corvanta::serverErrors::isSuccess(reply)) {
            silent_ = 0;
            showState(reply.value(QStringLiteral("resp"))
                          .toMap()
                          .value(QStringLiteral("getcmds"))
                          .toMap()
                          .value(QStringLiteral("upgradestate"))
                          .toMap());
        }
    });
    if (++silent_ == 1)
        return;
    progressText_->setText(tr("等待设备重启…"));
    if (silent_ < MostSilent)
        return;
    upgrading_ = false;
    watch_.stop();
    progressText_->setText(tr("设备没有恢复连接"));
    showButtons();
}

void UpgradeConfigPage::showState(const QVariantMap& state) {
    const QString name = state.value(QStringLiteral("state")).toString();
    const QString own = state.value(QStringLiteral("text")).toString();
    bar_->setValue(qBound(0, state.value(QStringLiteral("percent")).toInt(), Whole));
    const bool isOver = name.isEmpty() || name == QLatin1String("none") || name == QLatin1String("ok") ||
                        name == QLatin1String("error");
    progressText_->setText(name == QLatin1String("download")  ? tr("正在下载")
                           : name == QLatin1String("write")   ? tr("正在写入")
                           : name == QLatin1String("restart") ? tr("正在重启")
                           : name == QLatin1String("ok")      ? tr("升级完成")
                           : name == QLatin1String("error")   ? tr("升级失败：%1").arg(own)
                                                              : QString());
    const bool wasRunning = upgrading_;
    upgrading_ = !isOver;
    if (upgrading_)
        watch_.start();
    else
        watch_.stop();
    if (wasRunning && name == QLatin1String("ok")) {
        newest_.clear();
        readNames({QStringLiteral("softwareversion")}, [this](const QVariantMap& values) {
            installed_->setText(values.value(QStringLiteral("softwareversion")).toString());
        });
    }
    showButtons();
}
