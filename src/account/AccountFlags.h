#pragma once

#include <QString>

/// What the sign-in dialog remembers of the user's wishes: "autoLogin" and "savePassword" in config/account.json.
/// Kept apart from the settings document, and written at once on every change. GUI thread.
class AccountFlags final {
public:
    explicit AccountFlags(QString file);

    bool autoLogin() const { return autoLogin_; }
    bool savePassword() const { return savePassword_; }
    void setAutoLogin(bool on);
    void setSavePassword(bool on);

private:
    void save() const;

    QString file_;
    bool autoLogin_ = false;
    bool savePassword_ = false;
};
