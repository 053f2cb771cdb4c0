#pragma once

#include "base/AppContext.h"
#include "monitor/Shortcuts.h"

#include <QObject>

class DevicePanel;
class Fwidget;
class MessageBar;
class PollRunner;
class QStringList;
class QWidget;
class TopBar;
class WallControl;

/// What the operator orders of the main window as a whole, by its keys and by the buttons of its bars: layouts, full
/// screen, polling, settings. GUI thread.
class WindowCommands final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        TopBar& topBar;
        MessageBar& bottomBar;
        Fwidget& grid;
        WallControl& control;
        PollRunner& poll;
        DevicePanel& devices;
    };

    /// The parts belong to `window` and outlive this object; dialogs are shown over it.
    WindowCommands(const AppContext& context, const Parts& parts, QWidget& window);

private:
    void connectTopBar();
    void connectWall();
    void onKey(corvanta::ShortcutId id, int key);
    void setLayout(int rows, int columns);
    void togglePoll();
    void openSettings();
    void applySettings(const QStringList& changedKeys);
    void applyAspectMode();
    void toggleFullScreen();
    void leaveFullScreen();
    void showHelp();

    AppContext context_;
    Parts parts_;
    QWidget& window_;
};
