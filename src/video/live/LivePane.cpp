#include "video/live/LivePane.h"

#include "base/CallbackGate.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/Theme.h"
#include "playback/Snapshot.h"
#include "video/AvMessage.h"
#include "video/AvRequest.h"
#include "video/ui/ItemVideo.h"

#include <QLabel>
#include <QVBoxLayout>

#include <chrono>
#include <utility>
#include <variant>

namespace corvanta::video {
namespace {

constexpr int Tile = 0;
constexpr std::chrono::seconds Patience(3); // a camera that brings a picture more rarely shows no live video

playback::Picture copyOf(const AvFrame& frame) {
    return {frame.size, {frame.data, frame.data + byteCount(frame.size)}};
}

} // namespace

LivePane::LivePane(const AppContext& context, const QString& ipncId, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , ipncId_(ipncId)
    , tile_(new ItemVideo(Tile, this))
    , state_(new QLabel(this)) {
    setObjectName(QStringLiteral("livePane"));
    setAccessibleName(tr("实时视频"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3 * theme::Step);
    tile_->setObjectName(QStringLiteral("liveTile"));
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    tile_->setDeviceName(device == nullptr ? ipncId_ : device->displayName());
    tile_->setAspectMode(aspectModeFromSetting(context_.settings.get(keys::AspectMode).toString()));
    column->addWidget(tile_, 1);
    state_->setObjectName(QStringLiteral("liveState"));
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    state_->setContentsMargins(2 * theme::Step, 0, 2 * theme::Step, theme::Step);
    column->addWidget(state_);
    patience_.setSingleShot(true);
    patience_.setInterval(Patience);
    connect(&patience_, &QTimer::timeout, this, &LivePane::failCapture);
}

LivePane::~LivePane() {
    blockSignals(true); // whoever would hear of it is going, too
    apply(sessions_.stopAll());
}

bool LivePane::isOpen() const {
    return sessions_.requestOfDevice(ipncId_) > 0;
}

void LivePane::toggle() {
    apply(sessions_.open(ipncId_, Tile));
    emit sigOpenChanged(isOpen());
}

void LivePane::stop() {
    apply(sessions_.stopAll());
    emit sigOpenChanged(isOpen());
}

void LivePane::capture() {
    if (patience_.isActive())
        return; // its picture is on its way
    patience_.start();
    if (sessions_.requestOfTile(Tile) > 0)
        isWanted_ = true;
    else
        failCapture();
}

void LivePane::deliver(const playback::Picture& picture) {
    if (!patience_.isActive())
        return; // too late, and told so
    patience_.stop();
    emit sigCaptured(playback::toImage(picture));
}

void LivePane::failCapture() {
    patience_.stop();
    isWanted_ = false;
    emit sigCaptureFailed(tr("还没有视频画面，请等视频打开后再试!"));
}

void LivePane::onReport(const QVariantMap& report) {
    const AvReport parsed = AvReport::fromMap(report);
    if (parsed.kind == AvReport::Kind::Close && gate_ != nullptr)
        gate_->close(); // before the tile is emptied: no picture may come after that
    apply(sessions_.onReport(parsed));
    emit sigOpenChanged(isOpen());
}

void LivePane::showText(const QString& text) {
    tile_->setText(text);
    state_->setText(shownText(text));
}

void LivePane::apply(const SessionActions& actions) {
    for (const SessionAction& action : actions)
        std::visit([this](const auto& one) { carryOut(one); }, action);
    if (patience_.isActive() && sessions_.requestOfTile(Tile) == 0)
        failCapture(); // the stream that would have brought it is gone
}

void LivePane::carryOut(const SendOpenRequest& action) {
    const QVariantMap request =
        openVideoRequest(action.deviceId, false, context_.settings.get(keys::LongestOpening).toString());
    gate_ = std::make_shared<CallbackGate>();
    // On threads of the SDK, inside a passage of the gate; the pane lives until the gate is closed.
    const auto onMessage = [this, gate = gate_, device = action.deviceId.toStdString()](const std::string& text) {
        const AvMessage message = parseAvMessage(text);
        if (const auto* frame = std::get_if<AvFrame>(&message)) {
            tile_->showFrame(frame->data, static_cast<uint>(frame->size.width),
                             static_cast<uint>(frame->size.height));
            if (isWanted_.load(std::memory_order_relaxed) && isWanted_.exchange(false)) {
                const auto picture = std::make_shared<const playback::Picture>(copyOf(*frame));
                context_.gateway.inGui(gate, [this, picture] { deliver(*picture); });
            }
        } else if (std::holds_alternative<AvReportMap>(message)) {
            context_.gateway.inGui(gate, [this, device, text] {
                onReport(toGuiMap(json::parseObject(text), QString::fromStdString(device), Tile));
            });
        }
    };
    const int requestId = context_.gateway.RequestMessage(json::toText(request), onMessage, gate_);
    sessions_.onSent(action.deviceId, Tile, requestId);
    if (requestId <= 0)
        showText(failedText(requestId));
}

void LivePane::carryOut(const StopRequest& action) {
    context_.gateway.StopRequest(action.requestId);
    if (gate_ != nullptr)
        gate_->close();
}

void LivePane::carryOut(const ShowTileText& action) {
    showText(action.text);
}

void LivePane::carryOut(const ClearAllTexts&) {
    showText({});
}

void LivePane::carryOut(const StreamOpened& action) {
    tile_->attachStream(action.requestId, action.parameters);
}

void LivePane::carryOut(const CloseTile&) {
    tile_->close();
}

void LivePane::carryOut(const StreamEnded&) {
    if (gate_ != nullptr)
        gate_->close();
}

void LivePane::carryOut(const PreviewEnded&) {}

} // namespace corvanta::video
