#include "monitor/ui/MonitorMainUI.h"

#include "audio/Listener.h"
#include "audio/Talker.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/ListRefresh.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/MoveWidget.h"
#include "base/ui/TipDialog.h"
#include "base/ui/WaitOverlay.h"
#include "base/ui/Worded.h"
#include "linkage/AlarmInbox.h"
#include "linkage/ui/AlarmCenterPage.h"
#include "logs/ui/Check_Log_Widget.h"
#include "map/ui/FwidgetElectronMap.h"
#include "monitor/Archive.h"
#include "monitor/WindowMode.h"
#include "monitor/ui/AccountControl.h"
#include "monitor/ui/AlarmControl.h"
#include "monitor/ui/AudioControl.h"
#include "monitor/ui/DeviceOrder.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LinkageControl.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/ManageControl.h"
#include "monitor/ui/MapControl.h"
#include "monitor/ui/MessageBar.h"
#include "monitor/ui/ModulePages.h"
#include "monitor/ui/PlaybackControl.h"
#include "monitor/ui/PollRunner.h"
#include "monitor/ui/RecordControl.h"
#include "monitor/ui/SensorControl.h"
#include "monitor/ui/TopBar.h"
#include "monitor/ui/UpdateControl.h"
#include "monitor/ui/WallControl.h"
#include "monitor/ui/WallPtz.h"
#include "monitor/ui/WindowCommands.h"
#include "monitor/ui/WorkspaceKeeper.h"
#include "playback/ui/PlaybackPage.h"
#include "recording/Recorder.h"
#include "sensor/ui/ChartPage.h"
#include "sensor/ui/SensorPage.h"
#include "storage/ui/StoredFilesPage.h"
#include "video/ui/ItemVideo.h"

#include <QCloseEvent>
#include <QSplitter>
#include <QVBoxLayout>

#include <utility>

namespace keys = corvanta::keys;
namespace requests = corvanta::requests;

namespace {
constexpr int MessageTime = 10000; // ms
} // namespace

MonitorMainUI::MonitorMainUI(const AppContext& context, RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , storage_(storage) {
    setObjectName(QStringLiteral("MonitorMainUI"));
    corvanta::wordedName(this, [] { return tr("主窗口"); });
    build();
    account_ = new AccountControl(context_, *topBar_, *this);
    live_ = new LiveVideo(context_, *grid_, this);
    poll_ = new PollRunner(context_, *live_, this);
    control_ = new WallControl(context_, {*grid_, *live_, *poll_, devices_->tree()}, this);
    ptz_ = new WallPtz(context_, *grid_, *live_, this);
    manage_ = new ManageControl(context_, devices_->tree(), *this);
    linkage_ = new LinkageControl(context_, devices_->tree(), *topBar_, *this);
    alarms_ = new AlarmControl(context_, storage_, this);
    sensors_ = new SensorControl(context_, storage_, devices_->tree(), *this);
    maps_ = new MapControl(context_, *this);
    recorder_ = new Recorder({context_.gateway, storage_, context_.settings,
                              [this](const QString& ipncId) {
                                  const DeviceRecord* const device = context_.devices.device(ipncId);
                                  return device == nullptr ? QString() : device->displayName();
                              }},
                             this);
    records_ = new RecordControl(context_, {*grid_, *live_, *recorder_, storage_, devices_->tree()}, this);
    listener_ = new Listener(context_.gateway, systemSoundOutput(), this);
    talker_ = new Talker(context_.gateway, systemSoundInput(), this);
    audio_ = new AudioControl(context_, {*grid_, *live_, *listener_, *talker_, *topBar_}, this);
    order_ = new DeviceOrder(context_, this);
    workspace_ = new WorkspaceKeeper(context_, {*grid_, *live_, *poll_, devices_->tree(), *splitter_}, this);
    connectBars();
    connectPages();
    connectTree();
    connectReports();
    connectEvents();
    connectAlarms();
    new WindowCommands(context_, {*topBar_, *bottomBar_, *grid_, *control_, *poll_, *devices_}, *this);
    devices_->setVisible(!WindowMode::fromSetting(context_.settings.get(keys::WindowMode)).hidesDeviceTree);
    setTitle(context_.settings.title());
    onLists();
}

MonitorMainUI::~MonitorMainUI() {
    // Before the grid: the streams' pictures go to its tiles. And before the live videos, who works with them.
    delete workspace_;
    delete control_;
    delete ptz_; // stops a camera that moves
    delete audio_;
    delete talker_;
    delete listener_;
    delete records_;
    delete recorder_; // its files are complete now
    delete poll_;
    delete live_;
}

void MonitorMainUI::build() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    topBar_ = new TopBar(this);
    column->addWidget(topBar_);
    splitter_ = new QSplitter(this);
    splitter_->setObjectName(QStringLiteral("mainSplitter"));
    splitter_->setHandleWidth(4);
    splitter_->setChildrenCollapsible(false);
    devices_ = new DevicePanel(splitter_);
    devices_->setMinimumWidth(160);
    buildPages(splitter_);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({220, 1000});
    column->addWidget(splitter_, 1);
    update_ = new UpdateControl(context_, *topBar_, *this);
    column->addWidget(update_->makeProgressView(this));
    bottomBar_ = new MessageBar(this);
    column->addWidget(bottomBar_);
    wait_ = new WaitOverlay(this);
    grid_->addCover(*wait_);
}

void MonitorMainUI::buildPages(QWidget* parent) {
    pages_ = new ModulePages(*topBar_, parent);
    grid_ = new Fwidget(8, 8, context_.settings, pages_);
    pages_->setMaker(Module::Video, [this](QWidget*) { return grid_; });
    playback_ = new PlaybackControl(*pages_, storage_, this);
    pages_->showModule(Module::Video);
}

void MonitorMainUI::connectPages() {
    pages_->setMaker(Module::Files, [this](QWidget* parent) {
        auto* const files = new StoredFilesPage(context_, storage_, parent);
        connect(files, &StoredFilesPage::sigPlay, this, [this](const QVector<corvanta::storage::FileRecord>& chosen) {
            playback_->play(corvanta::archive::camerasOf(chosen, context_.devices));
        });
        return files;
    });
    pages_->setMaker(Module::Chart, [this](QWidget* parent) {
        auto* const charts = sensors_->makeChartPage(parent);
        connect(this, &MonitorMainUI::sig_UpdateSensorInputData, charts,
                &corvanta::sensor::ChartPage::UpdateSensorInputData);
        return charts;
    });
    pages_->setMaker(Module::Map, [this](QWidget* parent) { return maps_->makePage(parent); });
    pages_->setMaker(Module::Data, [this](QWidget* parent) { return sensors_->makeDataPage(parent); });
    pages_->setMaker(Module::Log, [this](QWidget* parent) { return new Check_Log_Widget(context_, parent); });
    pages_->setMaker(Module::Alarm, [this](QWidget* parent) { return alarms_->makePage(parent); });
    connect(sensors_, &SensorControl::sigShowCharts, this, [this] { pages_->showModule(Module::Chart); });
    connect(maps_, &MapControl::sigShowMaps, this, [this] { pages_->showModule(Module::Map); });
    connect(&playback_->page(), &corvanta::playback::PlaybackPage::sigMessage, this, &MonitorMainUI::showMessage);
}

void MonitorMainUI::connectAlarms() {
    messageTimer_.setObjectName(QStringLiteral("messageTimer"));
    messageTimer_.setSingleShot(true);
    messageTimer_.setInterval(MessageTime);
    connect(&messageTimer_, &QTimer::timeout, this, &MonitorMainUI::OnMessagertimeout);
    connect(alarms_, &AlarmControl::sigCount, topBar_,
            [this](qint64 count) { topBar_->setBadge(static_cast<int>(Module::Alarm), count); });
    connect(alarms_, &AlarmControl::sigMessage, this, &MonitorMainUI::showMessage);
    connect(alarms_, &AlarmControl::sigLive, this, &MonitorMainUI::showLive);
    connect(alarms_, &AlarmControl::sigPlayback, playback_, &PlaybackControl::playAt);
    topBar_->setBadge(static_cast<int>(Module::Alarm), context_.alarms.count());
}

void MonitorMainUI::showLive(const QString& ipncId) {
    const DeviceRecord* const device = context_.devices.device(ipncId);
    if (device == nullptr)
        return;
    pages_->showModule(Module::Video);
    const int tile = device->tileIndex;
    if (live_->isOpen(ipncId))
        grid_->on_setfocus(tile);
    else
        control_->toggle(ipncId);
}

void MonitorMainUI::connectBars() {
    connect(topBar_, &TopBar::sigSignIn, &context_.events, &AppEvents::sig_loginTip);
    connect(account_, &AccountControl::sigSignOut, this, &MonitorMainUI::signOut);
    connect(account_, &AccountControl::sigDevices, manage_, &ManageControl::openDevices);
    connect(ptz_, &WallPtz::sigMessage, this, &MonitorMainUI::showMessage);
    connect(ptz_, &WallPtz::sigDialog, manage_, &ManageControl::openPtz);
    connect(update_, &UpdateControl::sigMessage, this, &MonitorMainUI::showMessage);
    connect(update_, &UpdateControl::sigLeave, this, &MonitorMainUI::closeWithoutAsking);
    connect(live_, &LiveVideo::sigMessage, this, &MonitorMainUI::showMessage);
    connect(poll_, &PollRunner::sigMessage, this, &MonitorMainUI::showMessage);
    connect(order_, &DeviceOrder::sigMessage, this, &MonitorMainUI::showMessage);
    connect(records_, &RecordControl::sigMessage, this, &MonitorMainUI::showMessage);
    connect(listener_, &Listener::sigMessage, this, &MonitorMainUI::showMessage);
    connect(talker_, &Talker::sigMessage, this, &MonitorMainUI::showMessage);
    connect(devices_, &DevicePanel::sigSignIn, &context_.events, &AppEvents::sig_loginTip);
    connect(devices_, &DevicePanel::sigRefresh, this,
            [this] { corvanta::refreshDeviceList(context_.gateway, context_.events, corvanta::RefreshMode); });
}

void MonitorMainUI::connectTree() {
    DeviceTree& tree = devices_->tree();
    connect(&tree, &DeviceTree::sigMoveDevice, order_, &DeviceOrder::moveDevice);
    connect(&tree, &DeviceTree::sigMoveGroup, order_, &DeviceOrder::moveGroup);
    connect(&tree, &DeviceTree::sigEditGroup, account_, &AccountControl::openGroupEditor);
    connect(&tree, &DeviceTree::sigManageGroups, account_, &AccountControl::openGroups);
    connect(&tree, &DeviceTree::sigDefaultGroup, this, &MonitorMainUI::setDefaultGroup);
    connect(live_, &LiveVideo::sigOpenChanged, &tree, &DeviceTree::setVideoOpen);
}

void MonitorMainUI::setDefaultGroup(const QString& groupId) {
    context_.settings.set(keys::DefaultGroup, groupId);
    context_.settings.save();
    // The devices' tiles are counted anew from the list as it is.
    emit context_.events.sig_deviceFresh();
}

void MonitorMainUI::connectReports() {
    // Reports come from the SDK's side and are dealt with here, like those of every other operation.
    connect(live_, &LiveVideo::sigReport, this, &MonitorMainUI::sigDeal);
    connect(recorder_, &Recorder::sigReport, this, &MonitorMainUI::sigDeal);
    connect(records_, &RecordControl::sigSnapshot, this, &MonitorMainUI::sigDeal);
    connect(sensors_, &SensorControl::sigReport, this, &MonitorMainUI::sigDeal);
    connect(sensors_, &SensorControl::sigRecords, this, &MonitorMainUI::sig_UpdateSensorInputData);
    connect(recorder_, &Recorder::sigFrame, this, &MonitorMainUI::sig_RecodeData);
    connect(this, &MonitorMainUI::sig_RecodeData, this, &MonitorMainUI::OnGetRecodeData);
    connect(this, &MonitorMainUI::sigDeal, this, &MonitorMainUI::slotDeal);
}

void MonitorMainUI::connectEvents() {
    AppEvents& events = context_.events;
    connect(&events, &AppEvents::updateTitle, this, &MonitorMainUI::setTitle);
    // The tree's own words stand among the names that users gave.
    connect(&events, &AppEvents::updateLang, this, [this] {
        if (!context_.devices.isEmpty())
            onLists();
    });
    connect(&events, &AppEvents::sig_MessageBar, this, &MonitorMainUI::OngetAlarmMessage);
    connect(&events, &AppEvents::sig_deal, this, &MonitorMainUI::sigDeal);
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
    live_->followDevices();
    records_->onLists();
    ptz_->onLists();
    manage_->onLists();
    linkage_->onLists();
    sensors_->onLists();
    if (!context_.devices.isEmpty()) {
        workspace_->restoreVideos();
        if (std::exchange(pollWaits_, false))
            poll_->resume();
    }
}

void MonitorMainUI::rest() {
    workspace_->forgetVideos();
    poll_->pause();
    live_->stopAll();
    records_->pause();
    audio_->pause();
}

void MonitorMainUI::signOut() {
    rest();
    context_.gateway.setConfig(requests::directCommand(QStringLiteral("退出")));
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
        rest();
        nameTiles();
        pollWaits_ = true;
    }
    topBar_->setAccount(number);
    account_->onAccount(number);
    manage_->onAccount(number);
    linkage_->onAccount(number);
    sensors_->onAccount(number);
    devices_->setSignedIn(!number.isEmpty());
}

void MonitorMainUI::slotDeal(const QString& name, const QVariant& value) {
    if (name == LiveVideo::operation())
        live_->onReport(value.toMap());
    else if (name == Recorder::operation())
        recorder_->onReport(value.toMap());
    else if (name == QStringLiteral("更新设备预览"))
        live_->refreshPreview(value.toString());
    else
        sensors_->onReport(name, value.toMap());
}

void MonitorMainUI::OnGetRecodeData(const QString& ipncId, uint8_t* block, long length) {
    recorder_->onFrame(ipncId, block, length);
}

void MonitorMainUI::OngetAlarmMessage(const QString& message) {
    bottomBar_->showMessage(message);
    messageTimer_.start();
}

void MonitorMainUI::OnMessagertimeout() {
    bottomBar_->showMessage({});
    messageTimer_.stop();
}

void MonitorMainUI::placeFrame() {
    auto* const frame = qobject_cast<MoveWidget*>(window());
    if (frame == nullptr)
        return;
    const WindowMode mode = WindowMode::fromSetting(context_.settings.get(keys::WindowMode));
    frame->setWindowFlag(Qt::WindowStaysOnTopHint, mode.onTop);
    const bool wasFullScreen = workspace_->placeWindow(*frame, frame->minimumSizeHint());
    if (mode.state == WindowMode::State::Maximized)
        frame->setWindowState(Qt::WindowMaximized);
    if (mode.state == WindowMode::State::FullScreen || (mode.state == WindowMode::State::Normal && wasFullScreen))
        frame->setFullScreen(true);
    connect(workspace_, &WorkspaceKeeper::sigWindowStateChanged, this,
            [this] { topBar_->setFullScreen(window()->isFullScreen()); });
    topBar_->setFullScreen(frame->isFullScreen());
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
    workspace_->finish();
    ptz_->stop();
    poll_->pause();
    live_->stopAll();
    emit context_.events.sig_AppClosed();
}
