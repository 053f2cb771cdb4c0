// The settings' file, and everything that is read out of it with distrust.

#include "base/Settings.h"

#include "Fuzz.h"
#include "base/DeviceModel.h"
#include "base/ScreenPoll.h"
#include "monitor/SavedWorkspace.h"
#include "monitor/StartPlan.h"
#include "monitor/WindowMode.h"
#include "sensor/ChartSetup.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace keys = corvanta::keys;
namespace workspace = corvanta::workspace;

namespace {

/// What was set aside is of no use to the next input.
void sweep(const QString& folder) {
    const QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files))
        QFile::remove(dir.filePath(name));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("set.json"));
    sweep(folder.path());
    QFile file(path);
    fuzz::demand(file.open(QIODevice::WriteOnly), "the file can be written");
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    Settings settings(path);
    settings.load();
    settings.title();
    workspace::readOpenVideos(settings.get(keys::OpenVideos));
    workspace::readLayout(settings);
    const int zoom = workspace::readZoom(settings, 64);
    fuzz::demand(zoom >= -1 && zoom < 64, "the tile that is shown alone is one of the pool");
    if (const auto place = workspace::readWindowPlace(settings.get(keys::WindowPlace))) {
        const QRect screen(0, 0, 1280, 720);
        const QRect put = workspace::placeOnScreens(place->normal, QSize(680, 384), {screen});
        fuzz::demand(screen.contains(put), "the window stands on a screen");
    }
    WindowMode::fromSetting(settings.get(keys::WindowMode)).toSetting();
    StartPlan::fromSettings(settings);
    ScreenPoll poll(settings);
    poll.entries();
    const int interval = poll.interval();
    fuzz::demand(interval >= 1 && interval <= 3600, "the polling's interval is within its limits");
    poll.getNextPollDevices(DeviceModel());

    fuzz::demand(corvanta::sensor::chartInputs(settings.get(keys::ChartInputs)).size() == corvanta::sensor::MostTiles,
                 "every chart has its list of inputs");

    settings.save();
    settings.finishSaving();
    Settings again(path);
    again.load();
    fuzz::demand(again.values().keys() == settings.values().keys(), "what was saved has the keys that were loaded");
    return 0;
}
