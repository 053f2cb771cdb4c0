#pragma once

#include <QString>

#include <optional>

/// What the service takes, checked before anything is sent.
namespace corvanta::account {

constexpr int LongestName = 64; ///< characters, of groups, nicknames and notes

/// The text to show instead of sending a name; nothing when it is one. `empty` is the text for none at all.
std::optional<QString> checkName(const QString& name, const QString& empty);

} // namespace corvanta::account
