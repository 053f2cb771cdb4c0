#include "monitor/ui/MonitorMainUI.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/ListRefresh.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/TipDialog.h"
#include "base/ui/WaitOverlay.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MessageBar.h"
#include "monitor/ui/TopBar.h"
#include "video/Placement.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileAction.h"

#include <QCloseEvent>
#include <QSplitter>
#include <QVBoxLayout>

namespace keys = corvanta::keys;
namespace requests = corvanta::requests;

MonitorMainUI::MonitorMainUI(const AppContext& context, QWidget* parent)
    : QWidget(parent)
    , context_(context) {
    setObjectName(QStringLiteral("MonitorMainUI"));
    setAccessibleName(tr("主窗口"));
    build();
    live_ = new LiveVideo(context_, *grid_, this);
    connectBars();
    connectTiles();
    connectEvents();
    setTitle(context_.settings.title());
    bottomBar_->setLayoutShown(grid_->grid().rows(), grid_->grid().columns());
    onLists();
}

MonitorMainUI::~MonitorMainUI() {
    // Before the grid: the streams' pictures go to its tiles.
    delete live_;
}

void MonitorMainUI::build() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    topBar_ = new TopBar(this);
    column->addWidget(topBar_);
    auto* const splitter = new QSplitter(this);
    splitter->setObjectName(QStringLiteral("mainSplitter"));
    splitter->setHandleWidth(4);
    splitter->setChildrenCollapsible(false);
    devices_ = new DevicePanel(splitter);
    devices_->setMinimumWidth(160);
    grid_ = new Fwidget(8, 8, context_.settings, splitter);
    grid_->setMinimumWidth(320);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 1000});
    column->addWidget(splitter, 1);
    bottomBar_ = new MessageBar(this);
    column->addWidget(bottomBar_);
    wait_ = new WaitOverlay(this);
}

void MonitorMainUI::connectBars() {
    connect(topBar_, &TopBar::sigSignIn, &context_.events, &AppEvents::sig_loginTip);
    connect(topBar_, &TopBar::sigSignOut, this, [this] {
        live_->stopAll();
        context_.gateway.setConfig(requests::directCommand(QStringLiteral("退出")));
    });
    connect(topBar_, &TopBar::sigMinimize, this, [this] { window()->showMinimized(); });
    connect(topBar_, &TopBar::sigFullScreen, this, &MonitorMainUI::toggleFullScreen);
    connect(topBar_, &TopBar::sigDoubleClick, this,
            [this] { window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized); });
    connect(topBar_, &TopBar::sigClose, this, [this] { window()->close(); });
    connect(bottomBar_, &MessageBar::sigLayout, grid_,
            [this](int rows, int columns) { grid_->setLayout(rows, columns, true); });
    connect(bottomBar_, &MessageBar::sigStopAll, live_, &LiveVideo::stopAll);
    connect(grid_, &Fwidget::sigLayoutChanged, this,
            [this] { bottomBar_->setLayoutShown(grid_->grid().rows(), grid_->grid().columns()); });
    connect(devices_, &DevicePanel::sigSignIn, &context_.events, &AppEvents::sig_loginTip);
    connect(devices_, &DevicePanel::sigRefresh, this,
            [this] { corvanta::refreshDeviceList(context_.gateway, context_.events, corvanta::RefreshMode); });
    connect(&devices_->tree(), &DeviceTree::sigToggleVideo, live_, &LiveVideo::open);
}

void MonitorMainUI::connectTiles() {
    const auto mode = corvanta::video::aspectModeFromSetting(context_.settings.get(keys::AspectMode).toString());
    for (int index = 0; index < grid_->grid().poolSize(); ++index) {
        ItemVideo* const tile = grid_->tile(index);
        tile->setAspectMode(mode);
        connect(tile, &ItemVideo::sigMenuAction, this, &MonitorMainUI::onTileAction);
    }
    // Reports come from the SDK's side and are dealt with here, like those of every other operation.
    connect(live_, &LiveVideo::sigReport, this, &MonitorMainUI::sigDeal);
    connect(this, &MonitorMainUI::sigDeal, this, &MonitorMainUI::slotDeal);
    connect(live_, &LiveVideo::sigMessage, this, &MonitorMainUI::showMessage);
    connect(live_, &LiveVideo::sigOpenChanged, &devices_->tree(), &DeviceTree::setVideoOpen);
}

void MonitorMainUI::connectEvents() {
    AppEvents& events = context_.events;
    connect(&events, &AppEvents::updateTitle, this, &MonitorMainUI::setTitle);
    connect(&events, &AppEvents::sig_MessageBar, this, &MonitorMainUI::showMessage);
    connect(&events, &AppEvents::sig_deal, this, &MonitorMainUI::sigDeal);
    connect(&events, &AppEvents::quitVidoFullScreenEvent, this, &MonitorMainUI::leaveFullScreen);
    connect(&events, &AppEvents::sLonginAndLogoutEvent, this, &MonitorMainUI::onAccountChanged);
    connect(&events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            [this](const QVariantList& groups, const QVariantMap& devices) {
                // Empty lists clear the tree; the model follows with what the service sends next.
                if (groups.isEmpty() && devices.isEmpty())
                    devices_->clear();
                else
                    onLists();
            });
}

void MonitorMainUI::setTitle(const QString& title) {
    topBar_->setTitle(title);
    setWindowTitle(title);
}

void MonitorMainUI::onLists() {
    // The model was replaced as a whole; which videos are open is known here.
    for (const QString& id : context_.devices.ipncIds())
        context_.devices.setVideoOpen(id, live_->isOpen(id));
    devices_->rebuild(context_.devices);
    nameTiles();
}

void MonitorMainUI::nameTiles() {
    for (int index = 0; index < grid_->grid().poolSize(); ++index)
        grid_->tile(index)->setDeviceName(QString());
    for (const QString& id : context_.devices.ipncIds()) {
        const DeviceRecord& device = *context_.devices.device(id);
        if (ItemVideo* const tile = grid_->tile(device.tileIndex))
            tile->setDeviceName(device.displayName());
    }
}

void MonitorMainUI::onAccountChanged() {
    const QString number = context_.gateway.phoneId();
    if (number.isEmpty()) {
        live_->stopAll();
        nameTiles();
    }
    topBar_->setAccount(number);
    devices_->setSignedIn(!number.isEmpty());
}

void MonitorMainUI::onTileAction(int tileIndex, TileAction action) {
    const auto device = context_.devices.deviceOfTile(tileIndex);
    if (action == TileAction::Open && device)
        live_->open(*device);
    else if (action == TileAction::Stop)
        live_->stopTile(tileIndex);
    else if (action == TileAction::LeaveFullScreen)
        leaveFullScreen();
}

void MonitorMainUI::slotDeal(const QString& name, const QVariant& value) {
    if (name == LiveVideo::operation())
        live_->onReport(value.toMap());
}

void MonitorMainUI::showMessage(const QString& text) {
    bottomBar_->showMessage(text);
}

void MonitorMainUI::toggleFullScreen() {
    window()->setWindowState(window()->windowState() ^ Qt::WindowFullScreen);
    topBar_->setFullScreen(window()->isFullScreen());
}

void MonitorMainUI::leaveFullScreen() {
    if (window()->isFullScreen())
        toggleFullScreen();
}

void MonitorMainUI::closeWithoutAsking() {
    closingAgreed_ = true;
    window()->close();
}

void MonitorMainUI::closeEvent(QCloseEvent* event) {
    if (!closingAgreed_ && !TipDialog::ask(tr("提示"), tr("确定退出软件?"), true, this)) {
        event->ignore();
        return;
    }
    closingAgreed_ = true;
    live_->stopAll();
    emit context_.events.sig_AppClosed();
}
