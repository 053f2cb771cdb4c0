// What an update server says of its version.

#include "Fuzz.h"
#include "update/UpdateDescription.h"
#include "update/UserData.h"

#include <QDir>

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto parsed =
        update::parseDescription(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    fuzz::demand(parsed.description.has_value() != !parsed.problem.isEmpty(), "there is a description or a problem");
    if (!parsed.description)
        return 0;
    fuzz::demand(!parsed.description->updaterName.contains(QLatin1Char('/')), "the updater is a file's name");
    for (const update::ListedFile& file : parsed.description->files) {
        const QString path = QDir::cleanPath(file.path);
        fuzz::demand(path == file.path && QDir::isRelativePath(path) && !path.startsWith(QLatin1String("..")),
                     "no path leaves the folder");
        fuzz::demand(!update::isUserData(path, false), "no path is the users'");
        fuzz::demand(file.md5.size() == 32, "every file has its sum");
    }
    return 0;
}
