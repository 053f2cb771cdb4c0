#include "storage/FoundFiles.h"

#include "base/DataTree.h"

#include <QCollator>
#include <QHash>
#include <QMap>

#include <algorithm>
#include <numeric>

namespace corvanta::storage {

namespace {

/// For each file the place of its device among all devices by name.
std::vector<int> deviceRanks(const std::vector<FileRecord>& files,
                             const std::function<QString(const QString&)>& nameOf) {
    QHash<QString, int> ranks;
    for (const FileRecord& file : files)
        ranks.insert(file.ipncid, 0);
    QStringList ids = ranks.keys();
    ids.sort();
    QHash<QString, QString> names;
    for (const QString& id : qAsConst(ids))
        names.insert(id, nameOf(id));
    QCollator collator(QLocale(QLocale::Chinese, QLocale::China)); // as the texts, wherever the program runs
    collator.setNumericMode(true);
    std::stable_sort(ids.begin(), ids.end(), [&names, &collator](const QString& one, const QString& other) {
        return collator.compare(names.value(one), names.value(other)) < 0;
    });
    for (int i = 0; i < ids.size(); ++i)
        ranks[ids[i]] = i;
    std::vector<int> result;
    result.reserve(files.size());
    for (const FileRecord& file : files)
        result.push_back(ranks.value(file.ipncid));
    return result;
}

} // namespace

FoundFiles::FoundFiles(std::vector<FileRecord> files)
    : files_(std::move(files)) {
    // A search goes folder by folder, so most of them are in order already.
    std::stable_sort(files_.begin(), files_.end(),
                     [](const FileRecord& one, const FileRecord& other) { return one.time < other.time; });
}

qint64 FoundFiles::bytes() const {
    return std::accumulate(files_.begin(), files_.end(), qint64(0),
                           [](qint64 sum, const FileRecord& file) { return sum + file.size; });
}

std::vector<int> FoundFiles::ordered(Order order, bool descending,
                                     const std::function<QString(const QString&)>& nameOf) const {
    std::vector<int> result(files_.size());
    std::iota(result.begin(), result.end(), 0);
    const auto sort = [&result, descending](const auto& isLess) {
        if (descending)
            std::stable_sort(result.begin(), result.end(),
                             [&isLess](int one, int other) { return isLess(other, one); });
        else
            std::stable_sort(result.begin(), result.end(), isLess);
    };
    switch (order) {
    case Order::Time:
        if (descending)
            std::reverse(result.begin(), result.end());
        break;
    case Order::Device: {
        const std::vector<int> ranks = deviceRanks(files_, nameOf);
        const auto rank = [&ranks](int position) {
            return ranks[static_cast<std::size_t>(position)];
        };
        sort([&rank](int one, int other) { return rank(one) < rank(other); });
        break;
    }
    case Order::Kind: {
        const auto rank = [this](int position) {
            return dataTree::kindsByDay().indexOf(at(position).kind);
        };
        sort([&rank](int one, int other) { return rank(one) < rank(other); });
        break;
    }
    case Order::Name:
        sort([this](int one, int other) { return at(one).name < at(other).name; });
        break;
    case Order::Size:
        sort([this](int one, int other) { return at(one).size < at(other).size; });
        break;
    }
    return result;
}

FoundFiles::Iterator FoundFiles::from(const QDateTime& moment) const {
    return std::lower_bound(files_.begin(), files_.end(), moment,
                            [](const FileRecord& file, const QDateTime& time) { return file.time < time; });
}

std::vector<FoundFiles::DeviceDay> FoundFiles::day(const QDate& date) const {
    QMap<QString, std::vector<int>> devices;
    const auto last = from(QDateTime(date.addDays(1), QTime(0, 0)));
    for (auto file = from(QDateTime(date, QTime(0, 0))); file != last; ++file)
        devices[file->ipncid].push_back(static_cast<int>(file - files_.begin()));
    std::vector<DeviceDay> result;
    for (auto device = devices.begin(); device != devices.end(); ++device)
        result.push_back({device.key(), std::move(device.value())});
    return result;
}

QDate FoundFiles::nearestDay(const QDate& date, int direction) const {
    if (direction < 0) {
        const auto first = from(QDateTime(date, QTime(0, 0)));
        return first == files_.begin() ? QDate() : std::prev(first)->time.date();
    }
    const auto next = from(QDateTime(date.addDays(1), QTime(0, 0)));
    return next == files_.end() ? QDate() : next->time.date();
}

FoundFiles FoundFiles::without(const std::vector<int>& positions) const {
    std::vector<bool> leaves(files_.size(), false);
    for (const int position : positions)
        leaves[static_cast<std::size_t>(position)] = true;
    FoundFiles result;
    result.files_.reserve(files_.size());
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (!leaves[i])
            result.files_.push_back(files_[i]);
    }
    return result;
}

std::vector<int> assumedLengths(const std::vector<int>& starts) {
    constexpr int Longest = 600;
    constexpr int Day = 24 * 3600;
    std::vector<int> result;
    result.reserve(starts.size());
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const int next = i + 1 < starts.size() ? starts[i + 1] : Day;
        result.push_back(std::min(next - starts[i], Longest));
    }
    return result;
}

} // namespace corvanta::storage
