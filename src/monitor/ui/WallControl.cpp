#include "monitor/ui/WallControl.h"

#include "base/DeviceModel.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/PollRunner.h"
#include "video/Placement.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QWidget>

#include <algorithm>

using Mode = ScreenPoll::Mode;

WallControl::WallControl(const AppContext& context, const Parts& parts, QWidget* window)
    : QObject(window)
    , context_(context)
    , parts_(parts)
    , window_(window) {
    connectTiles();
    connect(&parts_.tree, &DeviceTree::sigToggleVideo, this, &WallControl::toggle);
    connect(&parts_.tree, &DeviceTree::sigPreview, this, &WallControl::preview);
    connect(&parts_.tree, &DeviceTree::sigOpenGroup, this, &WallControl::openGroup);
    // The tile of the device that the operator looks at in the tree is the selected one.
    connect(&parts_.tree, &DeviceTree::sigCurrentDevice, this, [this](const QString& ipncId) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (device != nullptr && parts_.grid.isIndexShown(device->tileIndex))
            parts_.grid.on_setfocus(device->tileIndex);
    });
}

void WallControl::connectTiles() {
    for (int index = 0; index < parts_.grid.grid().poolSize(); ++index) {
        ItemVideo* const tile = parts_.grid.tile(index);
        connect(tile, &ItemVideo::sigMenuAction, this, &WallControl::onTileAction);
        connect(tile, &ItemVideo::sigMenuAboutToShow, this, &WallControl::prepareMenu);
        connect(tile, &ItemVideo::sigOpenWanted, this, &WallControl::openTile);
        connect(tile, &ItemVideo::sigStopWanted, this, &WallControl::stopTile);
    }
}

bool WallControl::mayChange() {
    return parts_.poll.makeWay(window_);
}

void WallControl::toggle(const QString& ipncId) {
    if (mayChange())
        parts_.live.open(ipncId);
}

void WallControl::preview(const QString& ipncId) {
    if (mayChange())
        parts_.live.openPreview(ipncId);
}

void WallControl::stopAll() {
    if (mayChange())
        parts_.live.stopAll();
}

void WallControl::openTile(int tileIndex) {
    const auto device = context_.devices.deviceOfTile(tileIndex);
    if (device && !parts_.live.isOpen(*device) && mayChange())
        parts_.live.open(*device);
}

void WallControl::stopTile(int tileIndex) {
    if (mayChange())
        parts_.live.stopTile(tileIndex);
}

void WallControl::openGroup(const QString& groupId, bool open) {
    const GroupRecord* const group = context_.devices.group(groupId);
    const QStringList members = group == nullptr ? context_.devices.ungrouped() : context_.devices.members(*group);
    if (!mayChange())
        return;
    for (const QString& ipncId : members) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (!open)
            parts_.live.stopDevice(ipncId);
        else if (device->isVideo() && device->isOnline() && !parts_.live.isOpen(ipncId))
            parts_.live.open(ipncId);
    }
}

bool WallControl::leaveZoom() {
    if (parts_.grid.grid().zoomIndex() < 0)
        return false;
    parts_.grid.toggleZoom(parts_.grid.grid().zoomIndex());
    return true;
}

void WallControl::moveSelection(int rows, int columns) {
    const TileGrid& grid = parts_.grid.grid();
    if (grid.zoomIndex() >= 0)
        return;
    const int shown = std::min(parts_.grid.selectedIndex(), grid.rows() * grid.columns() - 1);
    const int row = std::clamp(shown / grid.columns() + rows, 0, grid.rows() - 1);
    const int column = std::clamp(shown % grid.columns() + columns, 0, grid.columns() - 1);
    parts_.grid.on_setfocus(row * grid.columns() + column);
}

void WallControl::prepareMenu(int tileIndex) {
    TileMenu& menu = parts_.grid.tile(tileIndex)->menu();
    const auto device = context_.devices.deviceOfTile(tileIndex);
    const bool isOpen = device && parts_.live.isOpen(*device);
    const bool isVideo = device && context_.devices.device(*device)->isVideo();
    menu.setActionEnabled(TileAction::Open, isVideo && !isOpen);
    menu.setActionEnabled(TileAction::Stop, isOpen || parts_.grid.tileRequest(tileIndex) > 0 ||
                                                (device && parts_.live.hasPreview(*device)));
    menu.setActionEnabled(TileAction::LeaveFullScreen,
                          window_->window()->isFullScreen() || parts_.grid.grid().zoomIndex() >= 0);
    const Mode mode = context_.poll.mode();
    for (const TileAction action : {TileAction::PollPreviews, TileAction::PollVideos})
        menu.setActionEnabled(action, mode != Mode::Off || !context_.poll.entries().isEmpty());
    menu.setActionChecked(TileAction::PollPreviews, mode == Mode::Previews);
    menu.setActionChecked(TileAction::PollVideos, mode == Mode::Videos);
}

void WallControl::onTileAction(int tileIndex, TileAction action) {
    switch (action) {
    case TileAction::Open:
        openTile(tileIndex);
        break;
    case TileAction::Stop:
        stopTile(tileIndex);
        break;
    case TileAction::LeaveFullScreen:
        if (!leaveZoom())
            emit sigLeaveFullScreen();
        break;
    case TileAction::PollPreviews:
        parts_.poll.toggle(static_cast<int>(Mode::Previews));
        break;
    case TileAction::PollVideos:
        parts_.poll.toggle(static_cast<int>(Mode::Videos));
        break;
    default:
        break; // recording, audio, snapshots and movement come with their own parts
    }
}
