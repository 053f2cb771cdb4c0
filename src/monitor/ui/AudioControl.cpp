#include "monitor/ui/AudioControl.h"

#include "audio/AudioMessages.h"
#include "audio/Listener.h"
#include "audio/Talker.h"
#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "base/ui/Worded.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/TopBar.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

namespace audio = corvanta::audio;
namespace keys = corvanta::keys;

AudioControl::AudioControl(const AppContext& context, const Parts& parts, QObject* parent)
    : QObject(parent)
    , context_(context)
    , parts_(parts) {
    for (int index = 0; index < parts_.grid.grid().poolSize(); ++index) {
        ItemVideo* const tile = parts_.grid.tile(index);
        connect(tile, &ItemVideo::sigMenuAction, this, &AudioControl::onTileAction);
        connect(tile, &ItemVideo::sigMenuAboutToShow, this, &AudioControl::prepareMenu);
    }
    connect(&parts_.live, &LiveVideo::sigOpenChanged, this, &AudioControl::onVideo);
    connect(&parts_.listener, &Listener::sigChanged, this, &AudioControl::show);
    connect(&parts_.talker, &Talker::sigChanged, this, &AudioControl::show);
    connect(&parts_.topBar, &TopBar::sigVolume, this, [this](int percent) {
        parts_.listener.setVolume(percent);
        context_.settings.set(keys::Volume, percent);
    });
    connect(&parts_.topBar, &TopBar::sigMuted, this, [this](bool muted) {
        parts_.listener.setMuted(muted);
        context_.settings.set(keys::Muted, muted);
        show();
    });
    const QVariant volume = context_.settings.get(keys::Volume);
    parts_.listener.setVolume(volume.isValid() ? volume.toInt() : 100);
    parts_.listener.setMuted(context_.settings.get(keys::Muted).toBool());
    corvanta::worded(this, [this] { show(); });
}

void AudioControl::onTileAction(int tileIndex, TileAction action) {
    if (action == TileAction::Listen)
        toggleListening(tileIndex);
    else if (action == TileAction::Talk)
        toggleTalking(tileIndex);
}

void AudioControl::toggleListening(int tileIndex) {
    const auto device = context_.devices.deviceOfTile(tileIndex);
    if (!device)
        return;
    const bool isOn = parts_.listener.device() == *device;
    context_.settings.set(keys::ListenedDevice, isOn ? QString() : *device);
    context_.settings.save();
    if (isOn)
        parts_.listener.stop();
    else
        parts_.listener.start(*device);
}

void AudioControl::toggleTalking(int tileIndex) {
    const auto device = context_.devices.deviceOfTile(tileIndex);
    if (!device)
        return;
    if (parts_.talker.device() == *device)
        parts_.talker.stop();
    else
        parts_.talker.start(*device);
}

void AudioControl::pause() {
    parts_.listener.stop();
    parts_.talker.stop();
}

void AudioControl::prepareMenu(int tileIndex) {
    ItemVideo& tile = *parts_.grid.tile(tileIndex);
    const QString device = context_.devices.deviceOfTile(tileIndex).value_or(QString());
    const bool isListening = !device.isEmpty() && parts_.listener.device() == device;
    const bool isTalking = !device.isEmpty() && parts_.talker.device() == device;
    TileMenu& menu = tile.menu();
    menu.setActionRunning(TileAction::Listen, isListening);
    menu.setActionEnabled(TileAction::Listen, isListening || audio::canListen(tile.streamParameters()));
    menu.setActionRunning(TileAction::Talk, isTalking);
    menu.setActionEnabled(TileAction::Talk, isTalking || audio::canTalk(tile.streamParameters()));
}

void AudioControl::onVideo(const QString& ipncId, bool open) {
    if (!open) {
        // Nobody looks at it any more: it is not listened to either, until its video is opened again.
        if (parts_.listener.device() == ipncId)
            parts_.listener.stop();
        if (parts_.talker.device() == ipncId)
            parts_.talker.stop();
    } else if (context_.settings.get(keys::ListenedDevice).toString() == ipncId) {
        parts_.listener.start(ipncId);
    }
}

void AudioControl::show() {
    const auto nameOf = [this](const QString& ipncId) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        return device == nullptr ? ipncId : device->displayName();
    };
    QString text;
    if (!parts_.listener.device().isEmpty())
        text = tr("正在收听：%1").arg(nameOf(parts_.listener.device()));
    if (!parts_.talker.device().isEmpty())
        text += (text.isEmpty() ? QString() : QStringLiteral("\n")) +
                tr("正在对讲：%1").arg(nameOf(parts_.talker.device()));
    parts_.topBar.setSound(parts_.listener.volume(), parts_.listener.isMuted(), text);
}
