#pragma once

#include <QString>

#include <functional>

class MonitorMainUI;
class QDialog;
class TourScript;

/// Signing in and what an account manages.
class AccountTour final {
public:
    /// Both outlive it, and it outlives the walk.
    AccountTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    void signIn();
    /// The sign-in dialog and what it leads to, before anybody has signed in.
    void signedOut();
    /// The dialogs of the account that is signed in. `pictures` begins their names.
    void signedIn(const QString& pictures);

private:
    void openSignIn();
    void flow(const QString& name, const char* link, bool hasPassword);
    void person(const QString& pictures);
    void manage(const QString& pictures);
    void friendsAndRights(const QString& pictures);
    void messages(const QString& pictures);
    /// Shows a page of the dialog on top and takes a picture of it.
    void shown(const QString& name, std::function<void(QDialog& dialog)> act);
    /// Closes the dialog on top.
    void close(const QString& what);

    MonitorMainUI& window_;
    TourScript& script_;
};
