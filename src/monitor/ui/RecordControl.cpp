#include "monitor/ui/RecordControl.h"

#include "base/DataTree.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "base/Settings.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "recording/Recorder.h"
#include "storage/RecordingStorage.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>

namespace keys = corvanta::keys;

namespace {
constexpr int Second = 1000; // ms

RecordMark::Kind markOf(Recorder::State state) {
    switch (state) {
    case Recorder::State::Recording:
        return RecordMark::Kind::Recording;
    case Recorder::State::Waiting:
        return RecordMark::Kind::Waiting;
    case Recorder::State::Off:
        break;
    }
    return RecordMark::Kind::None;
}
} // namespace

RecordControl::RecordControl(const AppContext& context, const Parts& parts, QObject* parent)
    : QObject(parent)
    , context_(context)
    , parts_(parts) {
    for (int index = 0; index < parts_.grid.grid().poolSize(); ++index) {
        ItemVideo* const tile = parts_.grid.tile(index);
        connect(tile, &ItemVideo::sigMenuAction, this, &RecordControl::onTileAction);
        connect(tile, &ItemVideo::sigMenuAboutToShow, this, &RecordControl::prepareMenu);
    }
    connect(&parts_.tree, &DeviceTree::sigToggleRecording, this, &RecordControl::toggle);
    connect(&parts_.tree, &DeviceTree::sigRecordGroup, this, &RecordControl::recordGroup);
    connect(&parts_.recorder, &Recorder::sigChanged, this, &RecordControl::show);
    connect(&parts_.recorder, &Recorder::sigMessage, this, &RecordControl::sigMessage);
    second_.setInterval(Second);
    connect(&second_, &QTimer::timeout, this, &RecordControl::showAll);
}

void RecordControl::toggle(const QString& ipncId) {
    const DeviceRecord* const device = context_.devices.device(ipncId);
    if (parts_.recorder.isWanted(ipncId))
        parts_.recorder.stop(ipncId);
    else if (device != nullptr && device->isVideo())
        parts_.recorder.start(ipncId);
}

void RecordControl::recordGroup(const QString& groupId, bool record) {
    const GroupRecord* const group = context_.devices.group(groupId);
    const QStringList members = group == nullptr ? context_.devices.ungrouped() : context_.devices.members(*group);
    for (const QString& ipncId : members) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (!record)
            parts_.recorder.stop(ipncId);
        else if (device->isVideo() && device->isOnline())
            parts_.recorder.start(ipncId);
    }
}

void RecordControl::pause() {
    parts_.recorder.pause();
    resumes_ = true;
}

void RecordControl::onLists() {
    if (context_.devices.isEmpty()) {
        pause();
    } else if (resumes_) {
        resumes_ = false;
        if (context_.settings.get(keys::RestoreState).toBool())
            parts_.recorder.resume(context_.devices.ipncIds());
    } else {
        parts_.recorder.keepOnly(context_.devices.ipncIds());
    }
    showAll();
}

void RecordControl::onTileAction(int tileIndex, TileAction action) {
    if (action == TileAction::Record) {
        if (const auto device = context_.devices.deviceOfTile(tileIndex))
            toggle(*device);
    } else if (action == TileAction::Snapshot) {
        snapshot(tileIndex);
    }
}

void RecordControl::prepareMenu(int tileIndex) {
    TileMenu& menu = parts_.grid.tile(tileIndex)->menu();
    const auto device = context_.devices.deviceOfTile(tileIndex);
    const bool isWanted = device && parts_.recorder.isWanted(*device);
    const bool isVideo = device && context_.devices.device(*device)->isVideo();
    menu.setActionRunning(TileAction::Record, isWanted);
    menu.setActionEnabled(TileAction::Record, isVideo || isWanted);
    menu.setActionEnabled(TileAction::Snapshot, parts_.grid.tileRequest(tileIndex) > 0);
}

void RecordControl::snapshot(int tileIndex) {
    const int requestId = parts_.grid.tileRequest(tileIndex);
    const auto device = context_.devices.deviceOfTile(tileIndex);
    if (requestId <= 0 || !device)
        return;
    const QString folder = parts_.storage.folderFor(corvanta::dataTree::Capture, *device);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        emit sigMessage(tr("抓拍失败：没有可用的存储空间"));
        return;
    }
    const QString path =
        folder + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz")) + QStringLiteral(".jpg");
    context_.gateway.setConfig(
        corvanta::requests::directCommand(
            QStringLiteral("更改视频操作"),
            {{QStringLiteral("reqid"), requestId}, {QStringLiteral("capture"), QDir(path).absolutePath()}}),
        this,
        context_.gateway.orSilence(
            this, [this, path](const QVariantMap& result) { onSnapshot(path, result); },
            [this] { emit sigMessage(tr("抓拍失败：%1").arg(corvanta::serverErrors::noReplyText())); }));
}

void RecordControl::onSnapshot(const QString& path, const QVariantMap& result) {
    qDebug() << "onVideoSet" << result;
    const int retcode = result.value(QStringLiteral("retcode")).toInt();
    emit sigMessage(retcode == 0 ? tr("已抓拍：%1").arg(QDir::toNativeSeparators(path))
                                 : tr("抓拍失败(%1)").arg(retcode));
    emit sigSnapshot(QStringLiteral("抓拍照片"), result);
}

void RecordControl::show(const QString& ipncId) {
    const Recorder::State state = parts_.recorder.state(ipncId);
    parts_.tree.setRecording(ipncId, state != Recorder::State::Off);
    const DeviceRecord* const device = context_.devices.device(ipncId);
    if (ItemVideo* const tile = device == nullptr ? nullptr : parts_.grid.tile(device->tileIndex)) {
        const auto lasting = parts_.recorder.lasting(ipncId);
        tile->setRecording(markOf(state), lasting ? lasting->count() : -1);
    }
    if (!parts_.recorder.wanted().isEmpty() && !second_.isActive())
        second_.start();
}

void RecordControl::showAll() {
    for (int index = 0; index < parts_.grid.grid().poolSize(); ++index) {
        const auto device = context_.devices.deviceOfTile(index);
        if (!device || !parts_.recorder.isWanted(*device))
            parts_.grid.tile(index)->setRecording(RecordMark::Kind::None, -1);
    }
    const QStringList wanted = parts_.recorder.wanted();
    if (wanted.isEmpty())
        second_.stop();
    for (const QString& ipncId : wanted)
        show(ipncId);
}
