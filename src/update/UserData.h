#pragma once

#include <QString>

namespace corvanta::update {

/// True for what is not part of an installation although it lies in its folder: what users made (the database, the
/// workspaces, the settings, the embedded service's store) and the description itself. It is neither listed in
/// descriptions nor compared, fetched, overwritten or deleted. Letters count without their case, as on Windows.
/// `path` is relative to the installation folder, with "/", and names a file or a folder; the answer for a folder
/// holds for all that it contains.
bool isUserData(const QString& path, bool isFolder);

} // namespace corvanta::update
