#pragma once

#include <QString>

#include <optional>

/// The rules of signing in, without a dialog.
namespace corvanta::account {

/// What the user typed, or what was remembered.
struct Credentials {
    QString phoneNumber;
    QString password;

    bool isComplete() const { return !phoneNumber.isEmpty() && !password.isEmpty(); }
};

/// The text to show instead of signing in; nothing when the entries are complete.
std::optional<QString> checkSignIn(const Credentials& entries);

} // namespace corvanta::account
