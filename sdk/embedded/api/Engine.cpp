#include "api/Engine.h"

#include "api/SocketDelegate.h"
#include "base/Log.h"
#include "service/ComputerId.h"
#include "service/ConfiguredBoards.h"
#include "store/Accounts.h"
#include "store/DatabaseFile.h"
#include "store/UserFiles.h"
#include "world/FirstWorld.h"
#include "world/MeasuringWorld.h"

#include <soci/soci.h>

#include <limits>
#include <utility>

namespace ipncsdk::api {

namespace {

constexpr auto loopFolder = "service/loops";
constexpr std::size_t mostNotices = 50;

} // namespace

Engine::Engine(const RuntimeOptions& options, std::filesystem::path root, std::atomic<int>& lastRequestId)
    : root_(std::move(root))
    , clock_(options.clock)
    , lastRequestId_(lastRequestId)
    , accounts_(database_, cameras_, key_, contents_, *clock_, options.passwordCost, service::computerId(root_))
    , loops_(clock_, [this](const std::string& ipncid) { return world::exhibitOf(ipncid, latest_); }) {
    device::ServiceConfig config = device::loadServiceConfig(root_);
    const auto notices = config.notices;
    openStore(options, std::move(config));
    accounts_.load();
    deviceWatch_ = std::make_unique<DeviceWatch>([this] {
        service_.post([this] { settleDevices(); });
        return loops_.isBusy();
    });
    media::HubOptions hub = hubOptions();
    finder_ = std::make_unique<CameraFinder>(
        CameraFinder::Parts{requests_, found_, network_, stopping_, options.discovery, hub.socketDelegate});
    cameraControl_ =
        std::make_unique<CameraControl>(CameraControl::Parts{requests_, cameraTalk_, stopping_, hub.socketDelegate});
    deviceFiles_ = std::make_unique<DeviceFiles>(DeviceFiles::Parts{
        database_, cameras_, loops_, accounts_.session(), requests_, files_, stopping_, hub.loopFolder, datFolder()});
    userFiles_ = std::make_unique<UserFiles>(
        UserFiles::Parts{database_, contents_, *clock_, accounts_.session(), requests_, files_, stopping_,
                         [this](const RequestPointer& request, service::Upload upload) {
                             keepUpload(request, std::move(upload));
                         }});
    hub_ = options.makeHub(std::move(hub));
    video_ = std::make_unique<VideoService>(VideoService::Parts{database_, cameras_, key_, accounts_.session(),
                                                                requests_, *hub_, service_, pictures_, root_});
    alarms_ = makeAlarms(options, notices);
    startSensors(options);
}

Engine::~Engine() = default;

std::filesystem::path Engine::datFolder() const {
    std::filesystem::path folder = storeFile_;
    folder += ".dat";
    return folder;
}

void Engine::openStore(const RuntimeOptions& options, device::ServiceConfig config) {
    storeFile_ = root_ / std::filesystem::path(std::u8string(config.store.begin(), config.store.end()));
    contents_.setStore(storeFile_);
    store::StoreContent content;
    content.fill = [this](soci::session& sql) {
        world::fillFirstWorld(
            sql, [this](const std::string& password) { return accounts_.hasher().hash(password); }, contents_);
    };
    content.upgrade = world::fillWaiting;
    auto opened = store::openDatabaseFile(storeFile_, options.storeTimeout, *clock_, content);
    if (!opened.notice.empty())
        notice(opened.notice);
    retention_ = config.samples;
    outbox_ = std::make_unique<service::Outbox>(root_, config.smsGateway, *clock_);
    watch_ =
        std::make_unique<StoreWatch>(std::move(opened.changes), [this] { service_.post([this] { lookAround(); }); });
    if (opened.session) {
        key_ = store::StoreKey::beside(storeFile_);
        database_.use(std::move(opened.session));
        const ServiceCode code = database_.change("enter the network cameras", [&](soci::session& sql) {
            cameras_.enter(sql, std::move(config.cameras), config.mistakes);
            service::enterConfiguredBoards(sql, config.boards, key_, config.mistakes);
            contents_.sweep(store::usedContents(sql));
            return ServiceCode::Done;
        });
        if (code != ServiceCode::Done)
            notice("服务数据库无法写入, 配置文件中的网络摄像机未能加入。");
    }
    for (const device::ConfigMistake& mistake : config.mistakes) {
        logLine(mistake.english());
        notice(mistake.chinese());
    }
}

void Engine::startSensors(const RuntimeOptions& options) {
    const auto changed = [this](std::vector<sensor::Reading> readings) {
        if (!accounts_.session().current())
            return;
        service_.post([this, told = std::move(readings)] {
            if (const Json message = sensorRequests_->updateOf(told, *clock_); !message.is_null())
                channel_.deliver(toText(message));
        });
    };
    sensors_ = std::make_unique<SensorService>(SensorService::Parts{
        database_, cameras_, key_, *hub_, *clock_, latest_, root_, storeFile_, retention_, changed, [this] {
            alarms_->desk().attach(*sensors_);
        }});
    sensors_->join(alarms_->desk());
    sensorRequests_ = std::make_unique<SensorRequests>(
        SensorRequests::Parts{database_, cameras_, accounts_.session(), *sensors_, requests_});
    if (!options.sensors)
        return;
    if (const std::string wrong = sensors_->start(); !wrong.empty())
        notice(wrong);
}

std::unique_ptr<AlarmService> Engine::makeAlarms(const RuntimeOptions& options,
                                                 std::optional<device::NoticesConfig> config) {
    return std::make_unique<AlarmService>(AlarmService::Parts{
        database_, cameras_, *clock_, accounts_.session(), *outbox_, *hub_, std::move(config),
        store::watchDatabaseFile(storeFile_, options.storeTimeout), datFolder(), root_, options.followsVideo,
        [this](std::function<void()> task) { service_.post(std::move(task)); },
        [this](const std::string& text) { return channel_.deliver(text); },
        [this](const std::string& text) {
            notice(text);
            service_.post([this] { deliverNotices(); });
        },
        [this](const std::string& ipncid) {
            return video_->lightStream(ipncid);
        }});
}

media::HubOptions Engine::hubOptions() {
    media::HubOptions options;
    options.loopFolder = root_ / loopFolder;
    options.log = [](const std::string& line) {
        logLine(line);
    };
    options.socketDelegate = [this] {
        return delegateFromReply(channel_.deliver(toText({{"type", "getsocketdelegate"}})));
    };
    options.loopControl = [this](const std::string& camera) {
        return loops_.of(camera);
    };
    return options;
}

void Engine::setClientCallback(ZELIPNCSDK::ClientCallback callback) {
    channel_.install(std::move(callback));
    service_.post([this] { deliverNotices(); });
}

void Engine::notice(const std::string& text) {
    const std::lock_guard lock(noticeMutex_);
    if (notices_.size() < mostNotices)
        notices_.push_back(text);
}

void Engine::deliverNotices() {
    if (!channel_.hasCallback())
        return;
    std::vector<std::string> notices;
    {
        const std::lock_guard lock(noticeMutex_);
        notices.swap(notices_);
    }
    for (const std::string& text : notices)
        channel_.deliver(toText({{"type", "servicenotice"}, {"text", text}}));
}

void Engine::tell(const Json& message) {
    service_.post([this, text = toText(message)] { channel_.deliver(text); });
}

void Engine::lookAround() {
    const auto look = accounts_.look();
    if (look.logout)
        loggedOut(*look.logout);
    else if (look.listsChanged)
        listsChanged();
    if (look.filesChanged)
        filesChanged();
    alarms_->look();
}

void Engine::settleDevices() {
    if (devices_.settleLoops() && accounts_.session().current())
        tell({{"type", "freshlist"}});
    if (loops_.isBusy())
        deviceWatch_->wake();
}

void Engine::loggedOut(const std::string& reason) {
    watch_->setActive(false);
    video_->closeAll(media::StreamError::NotSignedIn);
    alarms_->look();
    Json message = {{"type", "logout"}};
    if (!reason.empty())
        message["reason"] = reason;
    tell(message);
}

void Engine::listsChanged() {
    video_->closeForbidden();
    sensors_->boardsChanged();
    alarms_->listsChanged();
    tell({{"type", "freshlist"}});
}

void Engine::filesChanged() {
    tell({{"type", "freshuserinfo"}});
}

void Engine::actOn(const service::AccountService::Outcome& outcome) {
    if (outcome.logout)
        return loggedOut(*outcome.logout);
    if (outcome.listsChanged)
        listsChanged();
    if (outcome.filesChanged)
        filesChanged();
}

int Engine::nextRequestId() {
    int last = lastRequestId_;
    while (last < std::numeric_limits<int>::max()) {
        if (lastRequestId_.compare_exchange_weak(last, last + 1))
            return last + 1;
    }
    return 0;
}

void Engine::enqueue(const RequestPointer& request, Handler handler, Json message) {
    service_.post([this, request, handler, document = std::move(message)] {
        if (!request->hasEnded())
            (this->*handler)(request, document);
    });
}

void Engine::respond(const RequestPointer& request, const std::string& response) {
    request->respond(response);
    requests_.take(request->id());
}

void Engine::request(const std::string& text, int& requestId, ZELIPNCSDK::ResponseCallback callback) {
    requestId = 0;
    if (stopping_)
        return;
    std::string reason;
    auto message = parseObject(text, reason);
    Handler handler = nullptr;
    if (message && memberAt(*message, "avreq") != nullptr)
        handler = &Engine::videoRequest;
    else if (const auto family = message ? textAt(*message, "reqtype") : std::nullopt)
        handler = find(families(), *family);
    else if (message)
        reason = "it names no kind of request";
    if (handler == nullptr) {
        logLine("RequestMessage: " + reason);
        return;
    }
    const int id = nextRequestId();
    if (id == 0) {
        logLine("RequestMessage: no request ids are left");
        return;
    }
    auto request = std::make_shared<Request>(id, std::move(callback), keeper_);
    requests_.add(request);
    requestId = id;
    enqueue(request, handler, std::move(*message));
}

void Engine::stopRequest(int requestId) {
    video_->stop(requestId);
}

void Engine::command(const std::string& text, ZELIPNCSDK::ResponseCallback callback) {
    if (stopping_)
        return;
    std::string reason;
    auto message = parseObject(text, reason);
    if (!message)
        logLine("SetConfig: " + reason);
    const auto type = message ? textAt(*message, "type") : std::nullopt;
    const auto request = std::make_shared<Request>(0, std::move(callback), keeper_);
    if (type && *type == "avchange" && memberAt(*message, "audiodata") != nullptr) {
        // The samples are the caller's again when this returns; only the result waits its turn.
        service_.post([request, result = video_->say(*message)] { request->respond(result); });
        return;
    }
    const Handler handler = type ? find(commands(), *type) : &Engine::unknownCommand;
    enqueue(request, handler, message ? std::move(*message) : Json::object());
}

emReturnValue Engine::document(const std::string& query, std::string& out) const {
    out.clear();
    std::string reason;
    const auto message = parseObject(query, reason);
    const auto type = message ? textAt(*message, "type") : std::nullopt;
    if (!type || !service::Documents::isKnown(*type)) {
        logLine("GetConfig: " + (message ? std::string("no such document") : reason));
        return emBadArgument;
    }
    const auto document = documents_.make(*type);
    if (!document)
        return emFailure;
    out = toText(*document);
    return emSuccess;
}

void Engine::stop() {
    stopping_ = true;
    // First the callbacks, then what waits: what the client asked for before is still done, only not answered.
    keeper_.shut();
    watch_->stop();
    deviceWatch_->stop();
    outbox_->cancel();
    service_.finish();
    messages_.finish(true);
    hub_->stop();    // before the pictures: it breaks off those that are under way
    alarms_->stop(); // before the sensors: it switches off what plans have switched on
    sensors_->stop();
    sensorRequests_->stop();
    pictures_.finish(true);
    files_.finish(true);
    cameraTalk_.finish(true);
    network_.finish(true); // what is under way there looks at `stopping_`, as in the files
    hub_.reset();
    database_.close();
    channel_.install(nullptr);
}

} // namespace ipncsdk::api
