#include "monitor/DriveOrder.h"

#include "platform/Disks.h"

#include <QSet>

#include <filesystem>

namespace corvanta {

QList<DriveChoice> driveChoices(const QStringList& stored, const QStringList& present,
                                const std::function<std::optional<DriveChoice::Space>(const QString& root)>& space) {
    QList<DriveChoice> result;
    QSet<QString> seen{QString()};
    const auto add = [&](const QString& root, bool used) {
        if (seen.contains(root))
            return;
        seen.insert(root);
        const bool isPresent = present.contains(root);
        result += {root, used, isPresent, isPresent ? space(root) : std::nullopt};
    };
    for (const QString& root : stored)
        add(root, true);
    for (const QString& root : present)
        add(root, false);
    return result;
}

QList<DriveChoice> driveChoicesHere(const QStringList& stored) {
    QStringList present;
    for (const std::string& root : platform::driveRoots())
        present += QString::fromStdString(root);
    return driveChoices(stored, present, [](const QString& root) -> std::optional<DriveChoice::Space> {
        const auto space = platform::diskSpace(std::filesystem::path(root.toStdU16String()));
        if (!space)
            return std::nullopt;
        return DriveChoice::Space{space->free, space->total};
    });
}

} // namespace corvanta
