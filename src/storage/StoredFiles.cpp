#include "storage/StoredFiles.h"

#include "base/DataTree.h"

#include <QDebug>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace corvanta::storage {

namespace {

namespace fs = std::filesystem;

const QString TimeFormat = QStringLiteral("yyyy-MM-dd hh:mm:ss");

fs::path systemPath(const QString& path) {
    return fs::path(path.toStdU16String());
}

QString text(const fs::path& path) {
    return QString::fromStdU16String(path.u16string());
}

/// A folder whose files are looked through.
struct DayFolder {
    QString path; ///< ends with a slash
    QString kind;
    QString ipncid;
};

/// The names of the folders in a folder, sorted; links are none.
QStringList foldersIn(const fs::path& path) {
    QStringList result;
    std::error_code error;
    for (fs::directory_iterator it(path, fs::directory_options::skip_permission_denied, error), end;
         !error && it != end; it.increment(error)) {
        std::error_code typeError;
        if (it->symlink_status(typeError).type() == fs::file_type::directory)
            result += text(it->path().filename());
    }
    result.sort();
    return result;
}

std::vector<DayFolder> dayFolders(const QStringList& drives, const FileQuery& query, const SearchProgress& progress) {
    const QString first = query.start.date().toString(dataTree::DayFormat);
    const QString last = query.end.date().toString(dataTree::DayFormat);
    const QStringList& kinds = query.kinds.isEmpty() ? dataTree::kindsByDay() : query.kinds;
    std::vector<DayFolder> result;
    for (const QString& drive : drives) {
        const QString tree = drive + QStringLiteral("ZEL/");
        for (const QString& device : foldersIn(systemPath(tree))) {
            if (!query.devices.isEmpty() && !query.devices.contains(device))
                continue;
            for (const QString& kind : kinds) {
                if (progress.cancelled || !dataTree::kindsByDay().contains(kind))
                    continue;
                const QString folder = tree + device + QLatin1Char('/') + kind + QLatin1Char('/');
                for (const QString& day : foldersIn(systemPath(folder))) {
                    if (day >= first && day <= last)
                        result.push_back({folder + day + QLatin1Char('/'), kind, device});
                }
            }
        }
    }
    return result;
}

bool isLookedFor(const fs::path& file) {
    using namespace std::string_view_literals;
    static constexpr std::u16string_view suffixes[] = {u".avi"sv, u".mp4"sv, u".jpg"sv};
    const std::u16string suffix = file.extension().u16string();
    return std::find(std::begin(suffixes), std::end(suffixes), suffix) != std::end(suffixes);
}

void readFolder(const DayFolder& folder, const FileQuery& query, SearchProgress& progress,
                std::vector<FileRecord>& result) {
    std::error_code error;
    for (fs::directory_iterator it(systemPath(folder.path), error), end; !error && it != end; it.increment(error)) {
        if (progress.cancelled)
            return;
        std::error_code fileError;
        // What the folder itself tells of the type is enough: no link, a plain file.
        if (!isLookedFor(it->path()) || it->is_symlink(fileError) || !it->is_regular_file(fileError))
            continue;
        const QString name = text(it->path().filename());
        const auto time = timeFromName(name);
        if (!time) {
            qDebug() << "isNull isNull" << name;
            continue;
        }
        if (*time < query.start || *time > query.end)
            continue;
        const auto size = it->file_size(fileError);
        if (fileError)
            continue; // gone by now
        result.push_back({name, folder.path + name, static_cast<qint64>(size), folder.kind, folder.ipncid, *time});
        progress.found.fetch_add(1, std::memory_order_relaxed);
    }
}

/// The number that some digits mean, or -1.
int digits(const QString& name, int from, int count) {
    int result = 0;
    for (int i = from; i < from + count; ++i) {
        const int digit = name.at(i).unicode() - u'0';
        if (digit < 0 || digit > 9)
            return -1;
        result = result * 10 + digit;
    }
    return result;
}

} // namespace

QVariantMap FileRecord::toMap() const {
    return {{QStringLiteral("name"), name},
            {QStringLiteral("path"), path},
            {QStringLiteral("size"), size},
            {QStringLiteral("type"), kind},
            {QStringLiteral("ipncid"), ipncid},
            {QStringLiteral("date"), time.toString(dataTree::DayFormat)},
            {QStringLiteral("time"), time.toString(QStringLiteral("hh:mm:ss"))}};
}

bool FileRecord::isPicture() const {
    return name.endsWith(QLatin1String(".jpg"));
}

std::optional<FileQuery> FileQuery::fromTexts(const QString& start, const QString& end) {
    FileQuery query;
    query.start = QDateTime::fromString(start, TimeFormat);
    query.end = QDateTime::fromString(end, TimeFormat);
    return query.start.isValid() && query.end.isValid() ? std::optional(query) : std::nullopt;
}

std::optional<QDateTime> timeFromName(const QString& name) {
    constexpr int length = 14;
    if (name.isEmpty())
        qDebug() << "filename isempty";
    if (name.size() < length)
        return std::nullopt;
    const QDate date(digits(name, 0, 4), digits(name, 4, 2), digits(name, 6, 2));
    const QTime time(digits(name, 8, 2), digits(name, 10, 2), digits(name, 12, 2));
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time);
}

QStringList storedDevices(const QStringList& drives) {
    QStringList result;
    for (const QString& drive : drives)
        result += foldersIn(systemPath(drive + QStringLiteral("ZEL/")));
    result.sort();
    result.removeDuplicates();
    return result;
}

std::vector<FileRecord> searchFiles(const QStringList& drives, const FileQuery& query, SearchProgress& progress) {
    std::vector<FileRecord> result;
    const std::vector<DayFolder> folders = dayFolders(drives, query, progress);
    progress.folders = static_cast<int>(folders.size());
    for (const DayFolder& folder : folders) {
        if (progress.cancelled)
            break;
        readFolder(folder, query, progress, result);
        progress.foldersDone.fetch_add(1, std::memory_order_relaxed);
    }
    return result;
}

} // namespace corvanta::storage
