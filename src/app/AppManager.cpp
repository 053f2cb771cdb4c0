#include "app/AppManager.h"

#include "account/AccountFlags.h"
#include "account/PasswordVault.h"
#include "base/AppUi.h"
#include "base/Language.h"
#include "base/ListRefresh.h"
#include "base/TcpSocketManage.h"
#include "database/SqlHelp.h"
#include "linkage/AlarmHandler.h"
#include "linkage/AlarmInbox.h"
#include "linkage/AlarmSound.h"
#include "platform/FreeMemory.h"
#include "storage/RecordingStorage.h"
#include "storage/RepairThread.h"
#include "update/UpdateDescription.h"
#include "update/VersionCheck.h"
#include "vision/VideoMeasurer.h"
#include "vision/VideoPath.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>

#include <ipncsdk/ZELIPNCSDK.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace keys = corvanta::keys;
namespace linkage = corvanta::linkage;
namespace vision = corvanta::vision;

namespace {

struct Preparation {
    AppPaths paths;
    AppUi* ui;
};
std::optional<Preparation>& preparation() {
    static std::optional<Preparation> value;
    return value;
}

/// Destroys the manager while the application object still stands: `main`'s application object goes before what is
/// static, and a QObject that owns sockets and threads must not outlive it.
struct Instance {
    std::unique_ptr<AppManager> manager;
    Instance();
};
Instance& theInstance() {
    static Instance instance;
    return instance;
}
Instance::Instance()
    : manager(std::make_unique<AppManager>(preparation()->paths, *preparation()->ui,
                                           *ipncsdk::ZELIPNCSDK::GetInstance())) {
    qAddPostRoutine([] { theInstance().manager.reset(); });
}

/// The settings are read first: they say which folders count as drives.
std::unique_ptr<RecordingStorage> storageOf(Settings& settings, TaskQueue& queue) {
    settings.load();
    return std::make_unique<RecordingStorage>(
        settings, queue, std::make_unique<SystemDisks>(settings.get(keys::DriveFolders).toStringList()));
}

constexpr int AutoLoginDelay = 500;       // ms: the main window is shown by then
constexpr int FreeMemoryInterval = 20000; // ms

} // namespace

void AppManager::prepare(const AppPaths& paths, AppUi& ui) {
    corvanta::platform::shareHeaps();
    preparation().emplace(Preparation{paths, &ui});
}

AppManager* AppManager::instance() {
    Q_ASSERT_X(preparation().has_value(), "AppManager::instance", "prepare() comes first");
    return theInstance().manager.get();
}

AppManager::AppManager(const AppPaths& paths, AppUi& ui, ipncsdk::ZELIPNCSDK& sdk)
    : paths_(paths)
    , ui_(ui)
    , sdk_(sdk)
    , settings_(paths.settingsFile())
    , poll_(settings_)
    , accountFlags_(std::make_unique<AccountFlags>(paths.accountFile()))
    , vault_(std::make_unique<PasswordVault>(paths.vaultFile(), systemKeyStore()))
    , storage_(storageOf(settings_, queue_))
    , gateway_(sdk, queue_)
    , clientCallback_(settings_, *storage_, queue_, *this) {
    connect(&settings_, &Settings::titleChanged, this, &AppEvents::updateTitle);
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, &AppEvents::updateLang);
    startSdk();
    connectSignals();
    // What follows comes in this order: time zones, recording drives, QR scanner, local database, automatic
    // sign-in, alarm sound, version check.
    loadTimeZones();
    prepareStorage();
    measurer_ = std::make_unique<vision::VideoMeasurer>(gateway_, devices_, paths_.root());
    connect(measurer_.get(), &vision::VideoMeasurer::sig_C_point, this, &AppManager::OngetVideoQRcodepoint);
    database_ = std::make_unique<SqlHelp>(paths_.databaseFile());
    alarms_ = std::make_unique<linkage::AlarmInbox>(paths_.alarmsFile());
    QTimer::singleShot(AutoLoginDelay, this, &AppManager::autoLogin);
    alarmSound_ = std::make_unique<AlarmSound>(settings_);
    alarmHandler_ = std::make_unique<linkage::AlarmHandler>(
        linkage::AlarmHandler::Parts{*this, devices_, *database_, *alarms_, [this](const QString& type) {
                                         playalarmMusic(type);
                                     }});
    alarmHandler_->setVideoHook([this](const QString& path) {
        measurer_->measure(vision::deviceOfVideo(path, storage_->searchedDrives()), path);
    });
    versionCheck_ = std::make_unique<corvanta::update::VersionCheck>();
    startWorker();
}

AppManager::~AppManager() {
    qDebug() << "~AppManager()";
    repair_.reset();
    alarmHandler_->setVideoHook({}); // alarms that wait in the queue are still handled
    measurer_.reset();
    worker_.quit();
    worker_.wait();
    gateway_.shutdown();
    sdk_.Cleanup();
    clientGate_->close(); // an SDK that calls all the same reaches nobody
    queue_.drain();       // connections that the SDK made or closed to the last
    settings_.save();
}

void AppManager::startWorker() {
    auto* const timer = new QTimer;
    timer->setInterval(FreeMemoryInterval);
    timer->moveToThread(&worker_);
    connect(&worker_, &QThread::started, timer, qOverload<>(&QTimer::start));
    connect(&worker_, &QThread::finished, timer, &QObject::deleteLater);
    connect(timer, &QTimer::timeout, timer, &corvanta::platform::returnFreeMemory);
    worker_.start();
}

void AppManager::startSdk() {
    const auto fails = [this] {
        ontip(tr("提示"), QStringLiteral("erro!!!"));
    };
    if (sdk_.Startup() != ipncsdk::emSuccess) {
        fails();
        return;
    }
    if (sdk_.SetClientCallback([this, gate = clientGate_](const std::string& message, std::string& reply) {
            if (const CallbackGate::Passage passage(*gate); passage)
                clientCallback_(message, reply);
        }) != ipncsdk::emSuccess)
        fails();
}

void AppManager::connectSignals() {
    connect(this, &AppEvents::sig_tip, this, &AppManager::ontip);
    connect(this, &AppEvents::sig_loginTip, this, [this] { onLoginTip(); });
    connect(this, &AppEvents::sig_logout, this, &AppManager::onlogout);
    connect(this, &AppEvents::sig_login, this, &AppManager::onlogin);
    connect(this, qOverload<>(&AppEvents::sig_updateList), this, &AppManager::onUpdateList);
    connect(this, qOverload<>(&AppEvents::sig_freshlocal), this, &AppManager::onFreshlocal);
    connect(this, &AppEvents::sig_wait, this, &AppManager::onWait);
    connect(this, &AppEvents::sig_deviceFresh, this, &AppManager::deviceFresh);
    connect(this, &AppEvents::Onsig_TriggerAlarm, this, &AppManager::TriggerAlarm);
    connect(this, &AppEvents::sig_AppClosed, this, &AppManager::onAppClosed);
}

void AppManager::loadTimeZones() {
    QFile file(QStringLiteral(":/style/timezone/timezone.json"));
    if (file.open(QIODevice::ReadOnly))
        timeZones_ = QJsonDocument::fromJson(file.readAll()).array().toVariantList();
    if (timeZones_.isEmpty())
        qDebug() << "no time zones in" << file.fileName();
}

void AppManager::prepareStorage() {
    storage_->prepareDrives();
    repair_ = std::make_unique<RepairThread>(storage_->searchedDrives());
    repair_->start();
}

std::optional<QString> AppManager::writeVersionFile(const QString& folder) {
    return corvanta::update::writeDescription(folder);
}

AppContext AppManager::context() {
    return {gateway_,   settings_,  devices_, *this,    *accountFlags_, paths_,         ui_,       poll_,
            *database_, *database_, *vault_,  *alarms_, inputFields_,   *versionCheck_, timeZones_};
}

int AppManager::RequestMessage(const std::string& json, std::function<void(const std::string&)> onResponse) {
    return gateway_.RequestMessage(json, std::move(onResponse), std::make_shared<CallbackGate>());
}

void AppManager::StopRequest(int requestId) {
    gateway_.StopRequest(requestId);
}

void AppManager::refreshList(const QString& mode) {
    corvanta::refreshDeviceList(gateway_, *this, mode);
}

void AppManager::refreshLocalList(const QString& mode) {
    corvanta::refreshLocalList(gateway_, *this, mode);
}

void AppManager::autoLogin() {
    emit updateTitle(settings_.title());
    if (accountFlags_->savePassword() && accountFlags_->autoLogin())
        onLoginTip(true);
}

void AppManager::ontip(const QString& title, const QString& context) {
    ui_.showTip(title, context);
}

void AppManager::onLoginTip(bool isAuto) {
    ui_.showSignIn(isAuto);
}

void AppManager::onlogin() {
    // Comes with every list of devices; only the first after a sign-out is a sign-in.
    if (!std::exchange(signedIn_, true)) {
        account_ = gateway_.phoneId();
        database_->addLoginLog(account_, QDateTime::currentDateTime(), QVariant());
    }
    emit sLonginAndLogoutEvent();
}

void AppManager::logSignOut() {
    database_->addLoginLog(std::exchange(account_, QString()), QVariant(), QDateTime::currentDateTime());
}

void AppManager::onlogout() {
    if (std::exchange(signedIn_, false))
        logSignOut();
    devices_ = DeviceModel();
    inputFields_.clear();
    emit sig_updateList(QVariantList(), QVariantMap());
    emit sig_freshlocal(QVariantMap());
    userInfoChanged();
    accountFlags_->setAutoLogin(false); // who signs out does not want to be signed in again at the next start
    emit sLonginAndLogoutEvent();
}

void AppManager::deviceFresh() {
    devices_ = DeviceModel::fromDocument(gateway_.document(QStringLiteral("ipnclist")),
                                         settings_.get(keys::DefaultGroup).toString());
    emit sig_updateList();
    emit sig_updateSensorList();
}

void AppManager::onUpdateList() {
    emit sig_updateList(devices_.groupList(), devices_.deviceMap());
}

void AppManager::onFreshlocal() {
    emit sig_freshlocal(localDevices_);
}

void AppManager::TriggerAlarm(const QVariantMap& AlarmMap) {
    alarmHandler_->handle(AlarmMap);
}

void AppManager::OngetVideoQRcodepoint(const QStringList& resultList) {
    measurer_->report(resultList);
}

void AppManager::playalarmMusic(const QString& type) {
    alarmSound_->play(type);
}

void AppManager::onWait(bool isWait, QRect WindowsRect, int waitTime) {
    ui_.showWait(isWait, WindowsRect, waitTime);
}

void AppManager::OncloseTcpConnect(TcpSocketManage* connection) {
    const auto it = std::find_if(connections_.begin(), connections_.end(),
                                 [connection](const auto& known) { return known.get() == connection; });
    if (it != connections_.end())
        connections_.erase(it);
}

void AppManager::onAppClosed() {
    if (std::exchange(leaving_, true))
        return;
    logSignOut();
    database_->clearInputDatas();
    database_->clearElectronMaps();
}

void AppManager::listReady() {
    emit sig_login();
    emit sig_deviceFresh();
    userInfoChanged(); // what is deleted with a device goes from the maps, too
}

void AppManager::localListReady(const QVariantMap& devices) {
    if (!devices.isEmpty())
        localDevices_ = devices;
    emit sig_freshlocal(devices);
}

void AppManager::signedOut(const QString& reason) {
    emit sig_logout();
    if (!reason.isEmpty())
        emit sig_logoutReason(reason);
}

void AppManager::sensorValues(const QString& time, const QVariantList& values) {
    emit sig_UpdateSensorInputData(time, values);
}

void AppManager::alarm(const QVariantMap& message) {
    emit Onsig_TriggerAlarm(message);
}

void AppManager::sdkCrashed() {
    settings_.save();
    settings_.finishSaving(); // who knows how far this process still comes
    QCoreApplication::exit(0);
}

void AppManager::notice(const QString& text) {
    emit sig_MessageBar(text);
}

void AppManager::textMessage(const QVariantMap& message) {
    emit sig_sms(message);
}

void AppManager::userInfoChanged() {
    const QString maps = QStringLiteral("userconfig");
    const QVariantMap before =
        std::exchange(userInfo_, signedIn_ ? gateway_.document(QStringLiteral("userinfo")) : QVariantMap());
    const auto iconsOf = [&maps](QVariantMap document) {
        document.remove(maps);
        return document;
    };
    if (iconsOf(before) != iconsOf(userInfo_))
        emit sig_updateIconlist();
    if (before.value(maps) != userInfo_.value(maps))
        emit sig_updateMapList();
}

void AppManager::connectionMade(TcpSocketManage* connection) {
    connections_.emplace_back(connection);
}

void AppManager::connectionClosed(TcpSocketManage* connection) {
    OncloseTcpConnect(connection);
}
