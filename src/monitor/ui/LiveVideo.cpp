#include "monitor/ui/LiveVideo.h"

#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "base/Settings.h"
#include "monitor/DeviceIndexRule.h"
#include "monitor/ui/Fwidget.h"
#include "video/AvMessage.h"
#include "video/AvRequest.h"
#include "video/ui/ItemVideo.h"

#include <QDebug>
#include <QImage>

#include <atomic>
#include <vector>

namespace video = corvanta::video;

namespace {

constexpr int QualityDelay = 300;    // ms
constexpr int SmallestPreview = 160; // px
constexpr int LargestPreview = 1280; // px

} // namespace

LiveVideo::LiveVideo(const AppContext& context, Fwidget& grid, QObject* parent)
    : QObject(parent)
    , context_(context)
    , grid_(grid) {
    qualityDelay_.setSingleShot(true);
    qualityDelay_.setInterval(QualityDelay);
    connect(&qualityDelay_, &QTimer::timeout, this, &LiveVideo::adjustQuality);
    connect(&grid_, &Fwidget::sigLayoutChanged, &qualityDelay_, qOverload<>(&QTimer::start));
}

LiveVideo::~LiveVideo() {
    for (const auto& [requestId, stream] : streams_) {
        context_.gateway.StopRequest(requestId);
        stream.gate->close();
    }
}

QString LiveVideo::operation() {
    return video::openVideoOperation();
}

void LiveVideo::open(const QString& ipncId) {
    const QString refusal = corvanta::refusalToOpen(grid_.grid(), context_.devices, ipncId);
    if (!refusal.isEmpty()) {
        emit sigMessage(refusal);
        return;
    }
    apply(sessions_.open(ipncId, context_.devices.device(ipncId)->tileIndex));
}

void LiveVideo::restore(const QStringList& ipncIds) {
    for (const QString& ipncId : ipncIds) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        const bool hasPlace = device != nullptr && device->tileIndex >= 0 &&
                              device->tileIndex < grid_.grid().rows() * grid_.grid().columns();
        if (!hasPlace)
            qDebug() << "not opened again, it has no tile now:" << ipncId;
        else if (!isOpen(ipncId))
            apply(sessions_.open(ipncId, device->tileIndex));
    }
}

void LiveVideo::openPreview(const QString& ipncId) {
    const QString refusal = corvanta::refusalToOpen(grid_.grid(), context_.devices, ipncId);
    if (!refusal.isEmpty()) {
        emit sigMessage(refusal);
        return;
    }
    const int tileIndex = context_.devices.device(ipncId)->tileIndex;
    if (isOpen(ipncId) || sessions_.requestOfTile(tileIndex) > 0)
        return;
    sendPreview(ipncId, tileIndex);
    if (const int requestId = sessions_.requestOfPreview(ipncId); requestId > 0)
        watchSilence(requestId, std::make_shared<std::atomic<int>>(tileIndex));
}

void LiveVideo::refreshPreview(const QString& ipncId) {
    if (sessions_.hasPreview(ipncId))
        sendPreview(ipncId, previewTiles_.value(ipncId));
}

void LiveVideo::sendPreview(const QString& ipncId, int tileIndex) {
    const ItemVideo* const tile = grid_.tile(tileIndex);
    if (tile == nullptr)
        return;
    // A request that is still on its way is replaced; the picture shown stays until the new one is there.
    const int before = sessions_.requestOfPreview(ipncId);
    context_.gateway.StopRequest(before);
    closeGate(before);
    const int pixels = qRound(tile->width() * tile->devicePixelRatioF());
    auto gate = std::make_shared<CallbackGate>();
    auto id = std::make_shared<std::atomic<int>>(0);
    // On a thread of the SDK, whose memory is gone after the callback.
    const auto onMessage = [this, tileIndex, device = ipncId.toStdString(), gate, id](const std::string& text) {
        context_.gateway.inGui(gate, [this, tileIndex, device, id, reply = video::readPreview(text)] {
            onPreview(QString::fromStdString(device), tileIndex, id->load(), reply);
        });
    };
    const int requestId = context_.gateway.RequestMessage(
        video::previewRequest(ipncId, qBound(SmallestPreview, pixels, LargestPreview)), onMessage, gate);
    id->store(requestId);
    if (requestId <= 0)
        return;
    streams_[requestId] = {gate, nullptr};
    sessions_.setPreview(ipncId, requestId);
    previewTiles_[ipncId] = tileIndex;
}

void LiveVideo::onPreview(const QString& ipncId, int tileIndex, int requestId, const video::PreviewReply& reply) {
    unheard_.remove(requestId);
    if (sessions_.requestOfPreview(ipncId) != requestId)
        return;
    if (!reply.problem.isEmpty())
        qDebug() << "preview refused" << reply.problem;
    const QImage picture = QImage::fromData(reinterpret_cast<const uchar*>(reply.jpeg.data()),
                                            static_cast<int>(reply.jpeg.size()), "JPEG");
    ItemVideo* const tile = grid_.tile(tileIndex);
    if (picture.isNull()) {
        grid_.setTileText(tileIndex, video::failedText(reply.retcode));
        failures_.insert(tileIndex, ipncId);
        apply(sessions_.stopPreview(ipncId));
    } else if (tile != nullptr) {
        tile->setText({});
        tile->setPreview(picture);
    }
}

void LiveVideo::adjustQuality() {
    const TileGrid& grid = grid_.grid();
    for (int index = 0; index < grid.poolSize(); ++index) {
        const int requestId = sessions_.requestOfTile(index);
        const bool mainStream = video::wantsMainStream(grid.zoomIndex(), grid.rows(), grid.columns(), index);
        if (requestId <= 0 || !quality_.mustAsk(requestId, mainStream))
            continue;
        context_.gateway.setConfig(
            corvanta::requests::directCommand(QStringLiteral("更改视频操作"),
                                              video::exchangeParameters(requestId, mainStream)),
            this, [this, requestId, mainStream](const QVariantMap& result) {
                const int retcode = result.value(QStringLiteral("retcode")).toInt();
                if (retcode == 0)
                    return;
                qDebug() << "the stream stays as it is" << requestId << mainStream << retcode;
                quality_.onRefused(requestId, mainStream);
            });
    }
}

QMap<int, QString> LiveVideo::openVideos() const {
    QMap<int, QString> result;
    for (const QString& ipncId : sessions_.devices())
        result.insert(sessions_.tileOfDevice(ipncId).value_or(-1), ipncId);
    return result;
}

void LiveVideo::followDevices() {
    struct Move {
        QString ipncId;
        int requestId = 0; ///< above 0 when the tile shows its open stream
        int to = -1;
        QString text;
        QVariantMap parameters;
    };
    std::vector<Move> moves;
    for (const QString& ipncId : sessions_.devices()) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        const int from = sessions_.tileOfDevice(ipncId).value_or(-1);
        if (device == nullptr || grid_.tile(device->tileIndex) == nullptr) {
            stopDevice(ipncId);
        } else if (const ItemVideo* const tile = grid_.tile(from); tile != nullptr && device->tileIndex != from) {
            const bool holdsTile = sessions_.deviceOfTile(from) == ipncId;
            moves.push_back({ipncId, holdsTile ? tile->requestId() : 0, device->tileIndex, tile->text(),
                             tile->streamParameters()});
        }
    }
    // First all leave, then all arrive: they may change places with each other.
    for (const Move& move : moves) {
        const int from = sessions_.tileOfDevice(move.ipncId).value_or(-1);
        const auto stream = streams_.find(sessions_.requestOfDevice(move.ipncId));
        if (stream != streams_.end()) {
            stream->second.tileIndex->store(move.to, std::memory_order_release);
            stream->second.gate->awaitPresent(); // nothing paints into the old tile any more
        }
        grid_.closeTile(from);
        grid_.setTileText(from, {});
    }
    for (const Move& move : moves) {
        sessions_.move(move.ipncId, move.to);
        grid_.setTileText(move.to, move.text);
        if (move.requestId > 0)
            grid_.tile(move.to)->attachStream(move.requestId, move.parameters);
    }
    for (const QString& ipncId : previewTiles_.keys()) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (device == nullptr || device->tileIndex != previewTiles_.value(ipncId))
            apply(sessions_.stopPreview(ipncId));
    }
    clearFailures();
    if (!moves.empty())
        qualityDelay_.start();
}

void LiveVideo::clearFailures() {
    const QMap<int, QString> open = openVideos();
    for (const int tileIndex : failures_.keys()) {
        const DeviceRecord* const device = context_.devices.device(failures_.value(tileIndex));
        if (device != nullptr && device->tileIndex == tileIndex)
            continue;
        failures_.remove(tileIndex);
        if (!open.contains(tileIndex))
            grid_.setTileText(tileIndex, {});
    }
}

void LiveVideo::stopDevice(const QString& ipncId) {
    apply(sessions_.stopDevice(ipncId));
}

void LiveVideo::stopTile(int tileIndex) {
    apply(sessions_.stopTile(tileIndex));
}

void LiveVideo::stopAll() {
    apply(sessions_.stopAll());
}

void LiveVideo::onReport(const QVariantMap& report) {
    const video::AvReport parsed = video::AvReport::fromMap(report);
    unheard_.remove(parsed.requestId);
    // Before the tile is emptied: no picture may come after that.
    if (parsed.kind == video::AvReport::Kind::Close)
        closeGate(parsed.requestId);
    apply(sessions_.onReport(parsed));
    if (parsed.kind == video::AvReport::Kind::Close)
        failures_.insert(parsed.tileIndex, parsed.deviceId);
}

void LiveVideo::apply(const video::SessionActions& actions) {
    for (const video::SessionAction& action : actions)
        std::visit([this](const auto& one) { carryOut(one); }, action);
}

void LiveVideo::carryOut(const video::SendOpenRequest& action) {
    const bool mainStream = video::wantsMainStream(grid_.grid().zoomIndex(), grid_.grid().rows(),
                                                   grid_.grid().columns(), action.tileIndex);
    const QVariantMap request = video::openVideoRequest(
        action.deviceId, mainStream, context_.settings.get(corvanta::keys::LongestOpening).toString());
    auto gate = std::make_shared<CallbackGate>();
    auto refusalTold = std::make_shared<std::atomic<bool>>(false); // one line a request, not one a picture
    // On a thread of the SDK: a picture goes straight to its tile; everything else is handed to the GUI thread as
    // the text it came as, and read there.
    const auto target = std::make_shared<std::atomic<int>>(action.tileIndex);
    const auto onMessage = [this, target, device = action.deviceId.toStdString(), gate,
                            refusalTold](const std::string& text) { // inside a passage of the gate
        const video::AvMessage message = video::parseAvMessage(text);
        if (const auto* frame = std::get_if<video::AvFrame>(&message)) {
            grid_.showFrame(target->load(std::memory_order_acquire), frame->data,
                            static_cast<uint>(frame->size.width), static_cast<uint>(frame->size.height));
        } else if (const auto* refused = std::get_if<video::AvFrameRefused>(&message)) {
            if (!refusalTold->exchange(true))
                qDebug() << "picture refused" << refused->reason;
        } else {
            // What a stopped request still had to say is dropped: its gate is closed by then.
            context_.gateway.inGui(gate, [this, target, device, text] {
                emit sigReport(operation(), video::toGuiMap(corvanta::json::parseObject(text),
                                                            QString::fromStdString(device), target->load()));
            });
        }
    };
    const int requestId = context_.gateway.RequestMessage(corvanta::json::toText(request), onMessage, gate);
    if (requestId > 0) {
        streams_[requestId] = {gate, target};
        opensMain_[requestId] = mainStream;
        watchSilence(requestId, target);
    }
    sessions_.onSent(action.deviceId, action.tileIndex, requestId);
}

void LiveVideo::carryOut(const video::StopRequest& action) {
    context_.gateway.StopRequest(action.requestId);
    closeGate(action.requestId);
}

void LiveVideo::closeGate(int requestId) {
    const auto it = streams_.find(requestId);
    if (it == streams_.end())
        return;
    it->second.gate->close();
    streams_.erase(it);
    unheard_.remove(requestId);
}

void LiveVideo::watchSilence(int requestId, const std::shared_ptr<std::atomic<int>>& tileIndex) {
    unheard_.insert(requestId);
    QTimer::singleShot(context_.gateway.patience(), this, [this, requestId, tileIndex] {
        if (unheard_.remove(requestId))
            grid_.setTileText(tileIndex->load(), corvanta::serverErrors::noReplyText());
    });
}

void LiveVideo::carryOut(const video::ShowTileText& action) {
    grid_.setTileText(action.tileIndex, action.text);
}

void LiveVideo::carryOut(const video::ClearAllTexts&) {
    grid_.clearAllTexts();
}

void LiveVideo::carryOut(const video::StreamOpened& action) {
    const DeviceRecord* const device = context_.devices.device(action.deviceId);
    const QString name = device == nullptr ? action.deviceId : device->displayName();
    emit sigMessage(name + QStringLiteral("  ") + action.connectionType);
    if (ItemVideo* const tile = grid_.tile(action.tileIndex))
        tile->attachStream(action.requestId, action.parameters);
    // What the device says counts; a device that says nothing is taken to do what it was asked.
    const QVariant isMain = action.parameters.value(QStringLiteral("hd"));
    quality_.onOpened(action.requestId, isMain.isValid() ? isMain.toBool() : opensMain_.value(action.requestId));
    opensMain_.remove(action.requestId);
    qualityDelay_.start();
    context_.devices.setVideoOpen(action.deviceId, true);
    emit sigOpenChanged(action.deviceId, true);
}

void LiveVideo::carryOut(const video::CloseTile& action) {
    grid_.closeTile(action.tileIndex);
}

void LiveVideo::carryOut(const video::StreamEnded& action) {
    closeGate(action.requestId);
    quality_.onEnded(action.requestId);
    opensMain_.remove(action.requestId);
    context_.devices.setVideoOpen(action.deviceId, false);
    emit sigOpenChanged(action.deviceId, false);
}

void LiveVideo::carryOut(const video::PreviewEnded& action) {
    context_.gateway.StopRequest(action.requestId);
    closeGate(action.requestId);
    if (ItemVideo* const tile = grid_.tile(previewTiles_.take(action.deviceId)))
        tile->setPreview({});
}
