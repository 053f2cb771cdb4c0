#include "map/ui/MapMarkVideoDiolag.h"

#include "base/CallbackGate.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "video/AvMessage.h"
#include "video/AvRequest.h"
#include "video/ui/ItemVideo.h"

#include <QDebug>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>
#include <variant>

namespace corvanta::map {
namespace {
constexpr int Tile = 0;
const QSize Usual(640, 420);    // px
const QSize Smallest(320, 180); // px, of the picture
} // namespace

MapMarkVideoDiolag::MapMarkVideoDiolag(const AppContext& context, const MapMarker& marker, QWidget* parent)
    : FramedDialog(tr("实时视频"), parent)
    , context_(context)
    , ipncId_(marker.ipncId)
    , tile_(new ItemVideo(Tile, this))
    , state_(new QLabel(this))
    , toggle_(nullptr) {
    setObjectName(QStringLiteral("MapMarkVideoDiolag"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    auto* const name = new QLabel(marker.name.left(100).simplified(), this);
    name->setObjectName(QStringLiteral("mapVideoName"));
    name->setTextFormat(Qt::PlainText);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    body()->addWidget(name);
    tile_->setObjectName(QStringLiteral("mapVideoTile"));
    tile_->setMinimumSize(Smallest);
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    tile_->setDeviceName(device == nullptr ? ipncId_ : device->displayName());
    tile_->setAspectMode(video::aspectModeFromSetting(context_.settings.get(keys::AspectMode).toString()));
    body()->addWidget(tile_, 1);
    state_->setObjectName(QStringLiteral("mapVideoState"));
    state_->setTextFormat(Qt::PlainText);
    body()->addWidget(state_);
    toggle_ = addButton(tr("关闭视频"), QStringLiteral("mapVideoToggle"), false);
    connect(toggle_, &QPushButton::clicked, this, &MapMarkVideoDiolag::toggle);
    connect(addButton(tr("关闭"), QStringLiteral("mapVideoClose"), true), &QPushButton::clicked, this,
            &QDialog::reject);
    resize(Usual);
    toggle();
}

MapMarkVideoDiolag::~MapMarkVideoDiolag() {
    apply(sessions_.stopAll());
}

void MapMarkVideoDiolag::done(int result) {
    apply(sessions_.stopAll());
    FramedDialog::done(result);
}

void MapMarkVideoDiolag::toggle() {
    apply(sessions_.open(ipncId_, Tile));
    toggle_->setText(sessions_.requestOfDevice(ipncId_) > 0 ? tr("关闭视频") : tr("打开视频"));
}

void MapMarkVideoDiolag::onReport(const QVariantMap& report) {
    const video::AvReport parsed = video::AvReport::fromMap(report);
    if (parsed.kind == video::AvReport::Kind::Close && gate_ != nullptr)
        gate_->close(); // before the tile is emptied: no picture may come after that
    apply(sessions_.onReport(parsed));
    toggle_->setText(sessions_.requestOfDevice(ipncId_) > 0 ? tr("关闭视频") : tr("打开视频"));
}

void MapMarkVideoDiolag::showText(const QString& text) {
    tile_->setText(text);
    state_->setText(text);
}

void MapMarkVideoDiolag::apply(const video::SessionActions& actions) {
    for (const video::SessionAction& action : actions)
        std::visit([this](const auto& one) { carryOut(one); }, action);
}

void MapMarkVideoDiolag::carryOut(const video::SendOpenRequest& action) {
    const QVariantMap request =
        video::openVideoRequest(action.deviceId, false, context_.settings.get(keys::LongestOpening).toString());
    gate_ = std::make_shared<CallbackGate>();
    // On threads of the SDK, inside a passage of the gate; the tile lives until the gate is closed.
    const auto onMessage = [this, gate = gate_, device = action.deviceId.toStdString()](const std::string& text) {
        const video::AvMessage message = video::parseAvMessage(text);
        if (const auto* frame = std::get_if<video::AvFrame>(&message)) {
            tile_->showFrame(frame->data, static_cast<uint>(frame->size.width),
                             static_cast<uint>(frame->size.height));
        } else if (std::holds_alternative<video::AvReportMap>(message)) {
            context_.gateway.inGui(gate, [this, device, text] {
                onReport(video::toGuiMap(json::parseObject(text), QString::fromStdString(device), Tile));
            });
        }
    };
    const int requestId = context_.gateway.RequestMessage(json::toText(request), onMessage, gate_);
    sessions_.onSent(action.deviceId, Tile, requestId);
    if (requestId <= 0)
        showText(video::failedText(requestId));
}

void MapMarkVideoDiolag::carryOut(const video::StopRequest& action) {
    context_.gateway.StopRequest(action.requestId);
    if (gate_ != nullptr)
        gate_->close();
}

void MapMarkVideoDiolag::carryOut(const video::ShowTileText& action) {
    showText(action.text);
}

void MapMarkVideoDiolag::carryOut(const video::ClearAllTexts&) {
    showText({});
}

void MapMarkVideoDiolag::carryOut(const video::StreamOpened& action) {
    tile_->attachStream(action.requestId, action.parameters);
}

void MapMarkVideoDiolag::carryOut(const video::CloseTile&) {
    tile_->close();
}

void MapMarkVideoDiolag::carryOut(const video::StreamEnded&) {
    if (gate_ != nullptr)
        gate_->close();
}

void MapMarkVideoDiolag::carryOut(const video::PreviewEnded&) {}

} // namespace corvanta::map
