#pragma once

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

/// A drive that recordings may go to.
struct DriveChoice {
    /// Bytes of a volume.
    struct Space {
        std::uint64_t free = 0; ///< whoever may use it: what the threshold is compared with
        std::uint64_t total = 0;
    };

    QString root;               ///< as the settings name it, "D:/" or "/media/disk/"
    bool isUsed = false;        ///< stands in the setting
    bool isPresent = false;     ///< is there now
    std::optional<Space> space; ///< nothing when it is away or cannot be asked
};

namespace corvanta {

/// The drives to choose from: first the stored ones in their order, also those that are away, then the others that
/// are there. Roots are compared exactly; empty and repeated ones are left out.
QList<DriveChoice> driveChoices(const QStringList& stored, const QStringList& present,
                                const std::function<std::optional<DriveChoice::Space>(const QString& root)>& space);

/// The drives of this computer, as `driveChoices` takes them; asks the system.
QList<DriveChoice> driveChoicesHere(const QStringList& stored);

} // namespace corvanta
