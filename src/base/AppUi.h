#pragma once

#include <QRect>
#include <QString>

/// What the application core lets the window side show. One implementation puts up real windows, the tests' one
/// records. GUI thread only. In place before the first `AppManager::instance()`, and alive as long as the manager.
class AppUi {
public:
    AppUi() = default;
    AppUi(const AppUi&) = delete;
    AppUi& operator=(const AppUi&) = delete;
    virtual ~AppUi() = default;

    /// A modal tip with one OK button.
    virtual void showTip(const QString& title, const QString& text) = 0;

    /// The sign-in dialog; `automatic` signs in with the remembered account without waiting for the user.
    virtual void showSignIn(bool automatic) = 0;

    /// Covers `area` (global coordinates; an empty one means the main window) until hidden, or for `milliseconds`
    /// (0: without limit).
    virtual void showWait(bool visible, const QRect& area, int milliseconds) = 0;
};
