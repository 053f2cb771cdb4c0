#pragma once

#include "base/AppUi.h"

#include <QPointer>

#include <memory>

struct AppContext;
class MonitorMainUI;
class MoveWidget;
class RecordingStorage;

/// Puts up the windows that the application core asks for. Before the main window stands, only tips are shown.
class MonitorUi final : public AppUi {
public:
    MonitorUi();
    ~MonitorUi() override;

    /// Puts the main window into `frame`, which owns it from then on, and shows neither. From here on dialogs belong
    /// to this window.
    MonitorMainUI& makeWindow(MoveWidget& frame, const AppContext& context, RecordingStorage& storage);

    void showTip(const QString& title, const QString& text) override;
    void showSignIn(bool automatic) override;
    void showWait(bool visible, const QRect& area, int milliseconds) override;

private:
    QPointer<MonitorMainUI> window_;
    std::unique_ptr<AppContext> context_;
};
