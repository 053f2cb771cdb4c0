#pragma once

#include <QString>

class OperationLog;

/// How changes of accounts, groups, friends and shares stand in the log of operations.
namespace corvanta::account {

enum class Change {
    Registered,
    Recovered,
    PasswordChanged,
    Rebound,
    Unbound,
    Nickname,
    HeadPicture,
    GroupAdded,
    GroupEdited,
    GroupDeleted,
    FriendAdded,
    FriendEdited,
    FriendDeleted,
    Shared,
    ShareEnded,
};

/// Writes one row. `user` is the account's number, `detail` what was changed.
void logChange(OperationLog& log, const QString& user, Change change, const QString& detail = {});

} // namespace corvanta::account
