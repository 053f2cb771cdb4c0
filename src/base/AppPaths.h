#pragma once

#include <QString>

/// Where the program keeps its data. Everything lies below one root: the executable's folder where that can be
/// written, else, and wherever the system's packages lie, the user's data folder.
class AppPaths final {
public:
    /// The paths below `root`, which must exist.
    explicit AppPaths(const QString& root);

    /// The paths of this process; creates the root folder when it is the user's.
    static AppPaths forApplication();
    /// The same for a program in `folder`.
    static AppPaths forProgramIn(const QString& folder);

    /// Whether programs in `folder` (absolute) are the system's, put there and replaced by packages or an
    /// administrator: below /usr, but not among the sources there. Nothing of ours is written there, even by who may.
    static bool isSystemFolder(const QString& folder);

    /// Absolute, without a slash at its end.
    const QString& root() const { return root_; }
    QString settingsFile() const { return root_ + QStringLiteral("/config/set.json"); }
    QString accountFile() const { return root_ + QStringLiteral("/config/account.json"); }
    /// The key that protects the remembered password where the system does not.
    QString vaultFile() const { return root_ + QStringLiteral("/config/vault.key"); }
    /// The alarms that nobody has acknowledged.
    QString alarmsFile() const { return root_ + QStringLiteral("/config/alarms.json"); }
    QString databaseFile() const { return root_ + QStringLiteral("/dataBase.db"); }
    /// The folders of the account's data; all end with a slash.
    QString workspaces() const { return root_ + QStringLiteral("/workspaces/"); }
    QString userHead() const { return workspaces() + QStringLiteral("userhead/"); }
    QString userInfo() const { return workspaces() + QStringLiteral("userinfo/"); }
    /// Pictures with which cameras that measure were set up, in a folder for each device.
    QString measuring() const { return workspaces() + QStringLiteral("measuring/"); }

private:
    QString root_;
};
