#pragma once

#include <QString>

/// The version that this build is.
namespace corvanta::update {

/// What servers compare: the number grows with every version that is published.
inline constexpr int BuiltInVersion = 2030;

/// The program that takes over once a new version is here, as descriptions written by this build name it.
inline const QString UpdaterName = QStringLiteral("UpdatePelmux.exe");

/// The version as people read it ("1.2.23"). It is the project's version in the build.
QString versionText();

/// What the user reads where a check would be, when packages bring new versions.
QString packageManagerText();

} // namespace corvanta::update
