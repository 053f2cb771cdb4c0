#include "base/DataTree.h"
#include "update/FileMd5.h"
#include "update/UpdateDescription.h"
#include "update/UserData.h"
#include "update/Version.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace corvanta::update {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(UpdateDescription)
};

/// What a folder contains, in the order in which it is written.
class Listing final {
public:
    explicit Listing(QString root)
        : root_(std::move(root)) {}

    /// Collects the paths of all files. Returns what no client would take.
    std::optional<QString> collect(const QString& folder) {
        const auto filter = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        const auto entries = QDir(at(folder)).entryInfoList(filter, QDir::Name);
        for (const QFileInfo& entry : entries) {
            const QString path = below(folder, entry.fileName());
            if (entry.isSymLink() || entry.isJunction() || (!entry.isDir() && !entry.isFile())) {
                qDebug() << "not listed, no file:" << path;
                continue;
            }
            if (isUserData(path, entry.isDir()))
                continue;
            if (!dataTree::pathComponent(entry.fileName()))
                return Texts::tr("文件名非法: %1").arg(path);
            if (!entry.isDir())
                paths_.push_back(path);
            else if (auto problem = collect(path))
                return problem;
        }
        return std::nullopt;
    }

    /// The list of one folder, once `md5s_` are there. Walks in the order of `collect`.
    std::optional<QString> hash() {
        HashProgress progress;
        md5s_ = md5OfFiles(root_, paths_, progress);
        for (std::size_t i = 0; i < paths_.size(); ++i) {
            if (md5s_[i].isEmpty())
                return Texts::tr("文件无法读取: %1").arg(paths_[i]);
        }
        return std::nullopt;
    }

    /// The files below `folder` (with its slash; empty: all), from the `next`-th on.
    QJsonArray list(const QString& folder) {
        QJsonArray entries;
        while (next_ < paths_.size() && paths_[next_].startsWith(folder)) {
            const QString rest = paths_[next_].mid(folder.size());
            const int slash = rest.indexOf(QLatin1Char('/'));
            if (slash >= 0) {
                const QString name = rest.left(slash);
                entries += QJsonObject{{QStringLiteral("fileName"), name},
                                       {QStringLiteral("sublist"), list(folder + name + QLatin1Char('/'))}};
            } else {
                entries += QJsonObject{{QStringLiteral("fileName"), rest},
                                       {QStringLiteral("Md5"), QString::fromLatin1(md5s_[next_])}};
                ++next_;
            }
        }
        return entries;
    }

private:
    QString at(const QString& folder) const { return folder.isEmpty() ? root_ : below(root_, folder); }
    static QString below(const QString& folder, const QString& name) {
        return folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
    }

    const QString root_;
    std::vector<QString> paths_;
    std::vector<QByteArray> md5s_;
    std::size_t next_ = 0;
};

} // namespace

std::optional<QString> writeDescription(const QString& folder) {
    Listing listing(folder);
    if (auto problem = listing.collect({}))
        return problem;
    if (auto problem = listing.hash())
        return problem;
    const QJsonObject description{{QStringLiteral("LatestVerison"), BuiltInVersion},
                                  {QStringLiteral("UpdateEXEname"), UpdaterName},
                                  {QStringLiteral("Md5List"), listing.list({})}};
    QFile file(folder + QStringLiteral("/versionMd5.json"));
    const QByteArray text = QJsonDocument(description).toJson();
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate) || file.write(text) != text.size() || !file.flush())
        return Texts::tr("文件无法写入: %1").arg(file.fileName());
    return std::nullopt;
}

} // namespace corvanta::update
