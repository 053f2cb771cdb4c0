#pragma once

#include "update/DownloadFolder.h"

#include <optional>

namespace corvanta::update {

/// Starts the updater, which waits for this program's end, copies what was fetched over the installation and starts
/// the program anew. An updater that was fetched takes the place of the one in the installation first. Returns why
/// it could not be started, for the user; the installation is as it was then, except perhaps for its updater.
std::optional<QString> startUpdater(const QString& updaterName, const DownloadFolder& fetched,
                                    const QString& installation);

} // namespace corvanta::update
