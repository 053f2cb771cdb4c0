#include "monitor/ui/LiveVideo.h"

#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "monitor/DeviceIndexRule.h"
#include "monitor/ui/Fwidget.h"
#include "video/AvMessage.h"
#include "video/AvRequest.h"
#include "video/ui/ItemVideo.h"

#include <QDebug>

#include <atomic>

namespace video = corvanta::video;

LiveVideo::LiveVideo(const AppContext& context, Fwidget& grid, QObject* parent)
    : QObject(parent)
    , context_(context)
    , grid_(grid) {}

LiveVideo::~LiveVideo() {
    for (const auto& [requestId, gate] : gates_) {
        context_.gateway.StopRequest(requestId);
        gate->close();
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
    // Before the tile is emptied: no picture may come after that.
    if (parsed.kind == video::AvReport::Kind::Close)
        closeGate(parsed.requestId);
    apply(sessions_.onReport(parsed));
}

void LiveVideo::apply(const video::SessionActions& actions) {
    for (const video::SessionAction& action : actions)
        std::visit([this](const auto& one) { carryOut(one); }, action);
}

void LiveVideo::carryOut(const video::SendOpenRequest& action) {
    const QVariantMap request =
        video::openVideoRequest(action.deviceId,
                                video::wantsMainStream(grid_.grid().zoomIndex(), grid_.grid().rows(),
                                                       grid_.grid().columns(), action.tileIndex),
                                context_.settings.get(corvanta::keys::LongestOpening).toString());
    auto gate = std::make_shared<CallbackGate>();
    auto refusalTold = std::make_shared<std::atomic<bool>>(false); // one line a request, not one a picture
    // On a thread of the SDK: a picture goes straight to its tile; everything else is handed to the GUI thread as
    // the text it came as, and read there.
    const auto onMessage = [this, tileIndex = action.tileIndex, device = action.deviceId.toStdString(), gate,
                            refusalTold](const std::string& text) { // inside a passage of the gate
        const video::AvMessage message = video::parseAvMessage(text);
        if (const auto* frame = std::get_if<video::AvFrame>(&message)) {
            grid_.showFrame(tileIndex, frame->data, static_cast<uint>(frame->size.width),
                            static_cast<uint>(frame->size.height));
        } else if (const auto* refused = std::get_if<video::AvFrameRefused>(&message)) {
            if (!refusalTold->exchange(true))
                qDebug() << "picture refused" << refused->reason;
        } else {
            // What a stopped request still had to say is dropped: its gate is closed by then.
            context_.gateway.inGui(gate, [this, tileIndex, device, text] {
                emit sigReport(operation(), video::toGuiMap(corvanta::json::parseObject(text),
                                                            QString::fromStdString(device), tileIndex));
            });
        }
    };
    const int requestId = context_.gateway.RequestMessage(corvanta::json::toText(request), onMessage, gate);
    if (requestId > 0)
        gates_[requestId] = gate;
    sessions_.onSent(action.deviceId, action.tileIndex, requestId);
}

void LiveVideo::carryOut(const video::StopRequest& action) {
    context_.gateway.StopRequest(action.requestId);
    closeGate(action.requestId);
}

void LiveVideo::closeGate(int requestId) {
    const auto it = gates_.find(requestId);
    if (it == gates_.end())
        return;
    it->second->close();
    gates_.erase(it);
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
    context_.devices.setVideoOpen(action.deviceId, true);
    emit sigOpenChanged(action.deviceId, true);
}

void LiveVideo::carryOut(const video::CloseTile& action) {
    grid_.closeTile(action.tileIndex);
}

void LiveVideo::carryOut(const video::StreamEnded& action) {
    closeGate(action.requestId);
    context_.devices.setVideoOpen(action.deviceId, false);
    emit sigOpenChanged(action.deviceId, false);
}

void LiveVideo::carryOut(const video::PreviewEnded& action) {
    context_.gateway.StopRequest(action.requestId);
}
