#include "manageWidget/ui/DeviceConfigDialog.h"

#include "base/DeviceModel.h"
#include "base/ui/Theme.h"
#include "manageWidget/ui/InfoConfigPage.h"
#include "manageWidget/ui/MaintainConfigPage.h"
#include "manageWidget/ui/NetworkConfigPage.h"
#include "manageWidget/ui/ParameterConfigPage.h"
#include "manageWidget/ui/SdCardConfigPage.h"
#include "manageWidget/ui/UpgradeConfigPage.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace theme = corvanta::theme;
using corvanta::manage::ParameterPage;

namespace {
const QSize Usual(860, 600);   // px
constexpr int ListWidth = 120; // px, at least
} // namespace

DeviceConfigDialog::DeviceConfigDialog(const AppContext& context, const QString& ipncId, QWidget* parent)
    : FramedDialog(tr("设备配置"), parent)
    , list_(new QListWidget(this))
    , stack_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("DeviceConfigDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    list_->setObjectName(QStringLiteral("settingsPages"));
    list_->setAccessibleName(tr("设备配置分类"));
    row->addWidget(list_);
    row->addWidget(stack_, 1);
    body()->addLayout(row, 1);
    const DeviceRecord* const device = context.devices.device(ipncId);
    const ConfigTarget target{context, ipncId, device != nullptr && device->isAdmin,
                              device != nullptr && device->isOnline()};
    addPage(new InfoConfigPage(target, this), tr("基本信息"), "infoPage");
    addPage(new ParameterConfigPage(ParameterPage::Video, target, this), tr("视频参数"), "videoParameters");
    addPage(new ParameterConfigPage(ParameterPage::Image, target, this), tr("图像"), "imageParameters");
    addPage(new ParameterConfigPage(ParameterPage::Osd, target, this), tr("OSD"), "osdParameters");
    addPage(new ParameterConfigPage(ParameterPage::Record, target, this), tr("录像与抓拍"), "recordParameters");
    addPage(new ParameterConfigPage(ParameterPage::Ftp, target, this), tr("FTP"), "ftpParameters");
    addPage(new SdCardConfigPage(target, this), tr("SD卡"), "sdCardPage");
    addPage(new NetworkConfigPage(target, this), tr("网络"), "deviceNetworkPage");
    addPage(new UpgradeConfigPage(target, this), tr("升级"), "upgradePage");
    addPage(new MaintainConfigPage(target, this), tr("维护"), "maintainPage");
    connect(addButton(tr("关闭"), QStringLiteral("configClose"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int page) {
        stack_->setCurrentIndex(page);
        if (page >= 0)
            pages_[page]->begin();
    });
    list_->setFixedWidth(std::max(ListWidth, list_->sizeHintForColumn(0) + 2 * list_->frameWidth()));
    list_->setCurrentRow(0);
    list_->setFocus();
    resize(parent == nullptr ? Usual : Usual.boundedTo(parent->screen()->availableSize()));
}

void DeviceConfigDialog::addPage(ConfigPage* page, const QString& text, const char* objectName) {
    page->setNames(QLatin1String(objectName), text);
    stack_->addWidget(page);
    pages_ += page;
    list_->addItem(text);
}

void DeviceConfigDialog::showPage(int page) {
    list_->setCurrentRow(page);
}

void DeviceConfigDialog::done(int result) {
    for (ConfigPage* const page : qAsConst(pages_))
        page->discard();
    FramedDialog::done(result);
}
