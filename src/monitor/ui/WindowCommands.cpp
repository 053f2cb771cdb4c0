#include "monitor/ui/WindowCommands.h"

#include "base/AppEvents.h"
#include "base/Language.h"
#include "base/ListRefresh.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "base/ui/MoveWidget.h"
#include "monitor/Layouts.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MessageBar.h"
#include "monitor/ui/PollRunner.h"
#include "monitor/ui/TopBar.h"
#include "monitor/ui/WallControl.h"
#include "monitor/ui/WindowKeys.h"
#include "monitor/ui/settings/HelpSheet.h"
#include "monitor/ui/settings/SettingsDialog.h"
#include "monitor/ui/settings/SettingsLog.h"
#include "video/Placement.h"
#include "video/ui/ItemVideo.h"

#include <array>
#include <utility>

namespace keys = corvanta::keys;
using PollMode = ScreenPoll::Mode;

WindowCommands::WindowCommands(const AppContext& context, const Parts& parts, QWidget& window)
    : QObject(&window)
    , context_(context)
    , parts_(parts)
    , window_(window) {
    connectTopBar();
    connectWall();
    connect(&context_.events, &AppEvents::quitVidoFullScreenEvent, this, &WindowCommands::leaveFullScreen);
    new WindowKeys(window_, parts_.grid, parts_.devices.tree(),
                   [this](corvanta::ShortcutId id, int key) { onKey(id, key); });
    applyAspectMode();
}

void WindowCommands::connectTopBar() {
    TopBar& bar = parts_.topBar;
    connect(&bar, &TopBar::sigPoll, this, &WindowCommands::togglePoll);
    connect(&bar, &TopBar::sigSettings, this, &WindowCommands::openSettings);
    connect(&bar, &TopBar::sigHelp, this, &WindowCommands::showHelp);
    connect(&bar, &TopBar::sigMinimize, this, [this] { window_.window()->showMinimized(); });
    connect(&bar, &TopBar::sigFullScreen, this, &WindowCommands::toggleFullScreen);
    connect(&bar, &TopBar::sigDoubleClick, this, [this] {
        QWidget* const frame = window_.window();
        frame->setWindowState(frame->windowState() ^ Qt::WindowMaximized);
    });
    connect(&bar, &TopBar::sigClose, this, [this] { window_.window()->close(); });
    const auto showPolling = [this] {
        parts_.topBar.setPolling(parts_.poll.isRunning());
    };
    connect(&parts_.poll, &PollRunner::sigRunningChanged, this, showPolling);
    showPolling();
}

void WindowCommands::connectWall() {
    connect(&parts_.bottomBar, &MessageBar::sigLayout, this, &WindowCommands::setLayout);
    connect(&parts_.bottomBar, &MessageBar::sigStopAll, &parts_.control, &WallControl::stopAll);
    connect(&parts_.control, &WallControl::sigLeaveFullScreen, this, &WindowCommands::leaveFullScreen);
    const auto showLayout = [this] {
        parts_.bottomBar.setLayoutShown(parts_.grid.grid().rows(), parts_.grid.grid().columns());
    };
    connect(&parts_.grid, &Fwidget::sigLayoutChanged, this, showLayout);
    showLayout();
}

void WindowCommands::onKey(corvanta::ShortcutId id, int key) {
    using Id = corvanta::ShortcutId;
    static constexpr std::array<std::pair<int, int>, 4> steps{{{0, -1}, {0, 1}, {-1, 0}, {1, 0}}}; // rows, columns
    switch (id) {
    case Id::Escape:
        if (!parts_.control.leaveZoom())
            leaveFullScreen();
        break;
    case Id::StopTile:
        parts_.control.stopTile(parts_.grid.selectedIndex());
        break;
    case Id::Layout: {
        const corvanta::Layout& layout = corvanta::layouts()[static_cast<std::size_t>(key)];
        setLayout(layout.rows, layout.columns);
        break;
    }
    case Id::MoveSelection: {
        const auto [rows, columns] = steps[static_cast<std::size_t>(key)];
        parts_.control.moveSelection(rows, columns);
        break;
    }
    case Id::FullScreen:
        toggleFullScreen();
        break;
    case Id::DevicePanel:
        parts_.devices.setVisible(!parts_.devices.isVisible());
        break;
    case Id::SearchDevice:
        parts_.devices.show();
        parts_.devices.startSearch();
        break;
    case Id::RefreshDevices:
        corvanta::refreshDeviceList(context_.gateway, context_.events, corvanta::RefreshMode);
        break;
    case Id::TogglePoll:
        togglePoll();
        break;
    case Id::StopAll:
        parts_.control.stopAll();
        break;
    case Id::OpenSettings:
        openSettings();
        break;
    case Id::Help:
        showHelp();
        break;
    case Id::ToggleVideo: // the tile or the tree that has the focus does these
    case Id::ZoomTile:
    case Id::MoveCamera:
        break;
    }
}

void WindowCommands::setLayout(int rows, int columns) {
    parts_.grid.setLayout(rows, columns, true);
}

void WindowCommands::togglePoll() {
    const PollMode running = context_.poll.mode();
    const bool previews = context_.settings.get(keys::PollMode).toInt() == static_cast<int>(PollMode::Previews);
    const PollMode chosen = previews ? PollMode::Previews : PollMode::Videos;
    parts_.poll.toggle(static_cast<int>(running != PollMode::Off ? running : chosen));
}

void WindowCommands::openSettings() {
    int page = 0;
    int result = 0;
    do {
        SettingsDialog dialog(context_, &window_);
        connect(&dialog, &SettingsDialog::sigApplied, this, &WindowCommands::applySettings);
        dialog.setPage(page);
        result = dialog.exec();
        page = dialog.page();
    } while (result == SettingsDialog::SayAnew);
}

void WindowCommands::applySettings(const QStringList& changedKeys) {
    corvanta::settings::logChanges(context_, changedKeys);
    if (changedKeys.contains(keys::AspectMode))
        applyAspectMode();
    if (changedKeys.contains(keys::Language))
        corvanta::speak(context_.settings.get(keys::Language).toString());
    if (changedKeys.contains(keys::DefaultGroup))
        emit context_.events.sig_deviceFresh();
}

void WindowCommands::applyAspectMode() {
    const auto mode = corvanta::video::aspectModeFromSetting(context_.settings.get(keys::AspectMode).toString());
    for (int index = 0; index < parts_.grid.grid().poolSize(); ++index)
        parts_.grid.tile(index)->setAspectMode(mode);
}

void WindowCommands::toggleFullScreen() {
    if (auto* const frame = qobject_cast<MoveWidget*>(window_.window()))
        frame->setFullScreen(!frame->isFullScreen());
}

void WindowCommands::leaveFullScreen() {
    if (window_.window()->isFullScreen())
        toggleFullScreen();
}

void WindowCommands::showHelp() {
    HelpSheet(&window_).exec();
}
