#include "update/FileMd5.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string>
#include <thread>
#include <unordered_map>

namespace corvanta::update {
namespace {

constexpr std::size_t BlockSize = 262144; // bytes
constexpr unsigned MostThreads = 8;       // a disk serves no more well

bool isLink(const QFileInfo& file) {
    return file.isSymLink() || file.isJunction();
}

/// The work of one thread: takes the next file that nobody has taken.
class Hasher final {
public:
    Hasher(std::string folder, const std::vector<std::string>& paths, std::vector<std::string>& results,
           std::atomic<std::size_t>& next, HashProgress& progress)
        : folder_(std::move(folder))
        , paths_(paths)
        , results_(results)
        , next_(next)
        , progress_(progress)
        , block_(BlockSize, '\0') {}

    void run() {
        while (!progress_.cancelled) {
            const std::size_t index = next_++;
            if (index >= paths_.size())
                return;
            results_[index] = hash(paths_[index]);
            ++progress_.done;
        }
    }

private:
    std::string hash(const std::string& path) {
        const auto slash = path.rfind('/');
        if (slash != std::string::npos && !isPlainFolder(path.substr(0, slash)))
            return {};
        const QString full = QString::fromStdString(folder_ + '/' + path);
        const QFileInfo info(full);
        if (isLink(info) || !info.isFile()) // a pipe would keep us waiting for ever
            return {};
        QFile file(full);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return {};
        QCryptographicHash md5(QCryptographicHash::Md5);
        while (!progress_.cancelled) {
            const qint64 count = file.read(block_.data(), static_cast<qint64>(block_.size()));
            if (count < 0)
                return {};
            if (count == 0)
                return md5.result().toHex().toStdString();
            md5.addData(block_.data(), static_cast<int>(count));
        }
        return {};
    }

    /// Whether no part of a folder's path is a link.
    bool isPlainFolder(const std::string& path) {
        const auto known = folders_.find(path);
        if (known != folders_.end())
            return known->second;
        const auto slash = path.rfind('/');
        const bool isPlain = (slash == std::string::npos || isPlainFolder(path.substr(0, slash))) &&
                             !isLink(QFileInfo(QString::fromStdString(folder_ + '/' + path)));
        folders_.emplace(path, isPlain);
        return isPlain;
    }

    const std::string folder_;
    const std::vector<std::string>& paths_;
    std::vector<std::string>& results_;
    std::atomic<std::size_t>& next_;
    HashProgress& progress_;
    std::string block_;
    std::unordered_map<std::string, bool> folders_;
};

} // namespace

std::vector<QByteArray> md5OfFiles(const QString& folder, const std::vector<QString>& paths, HashProgress& progress) {
    // Standard texts: values of Qt's that several threads share count their owners.
    std::vector<std::string> names;
    names.reserve(paths.size());
    for (const QString& path : paths)
        names.push_back(path.toStdString());
    std::vector<std::string> results(names.size());
    std::atomic<std::size_t> next{0};
    const auto work = [&, root = folder.toStdString()] {
        Hasher(root, names, results, next, progress).run();
    };
    const std::size_t wanted =
        std::min<std::size_t>(std::clamp(std::thread::hardware_concurrency(), 1U, MostThreads), names.size());
    {
        std::vector<std::jthread> helpers;
        for (std::size_t i = 1; i < wanted; ++i)
            helpers.emplace_back(work);
        work();
    }
    std::vector<QByteArray> md5s;
    md5s.reserve(results.size());
    for (const std::string& result : results)
        md5s.push_back(QByteArray::fromStdString(result));
    return md5s;
}

} // namespace corvanta::update
