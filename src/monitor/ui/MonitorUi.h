#pragma once

#include "base/AppUi.h"

#include <QPointer>

#include <memory>

struct AppContext;
class MonitorMainUI;

/// Puts up the windows that the application core asks for. Before the main window stands, only tips are shown.
class MonitorUi final : public AppUi {
public:
    MonitorUi();
    ~MonitorUi() override;

    /// From here on dialogs belong to this window.
    void attach(MonitorMainUI& window, const AppContext& context);

    void showTip(const QString& title, const QString& text) override;
    void showSignIn(bool automatic) override;
    void showWait(bool visible, const QRect& area, int milliseconds) override;

private:
    QPointer<MonitorMainUI> window_;
    std::unique_ptr<AppContext> context_;
};
