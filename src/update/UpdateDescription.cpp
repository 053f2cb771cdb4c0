#include "update/UpdateDescription.h"

#include "base/DataTree.h"
#include "update/UserData.h"
#include "update/Version.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvanta::update {
namespace {

constexpr int DeepestFolder = 64;
constexpr int LongestPath = 1024; // characters
constexpr int Md5Digits = 32;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(UpdateDescription)
};

QString refusal(const char* reason) {
    return Texts::tr("更新描述文件不合法(%1)，已拒绝更新!").arg(Texts::tr(reason));
}

std::optional<int> wholeNumber(const QJsonValue& value) {
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    const bool isWhole = number >= 0 && number <= std::numeric_limits<int>::max() && std::floor(number) == number;
    return isWhole ? std::optional(static_cast<int>(number)) : std::nullopt;
}

std::optional<QByteArray> md5From(const QJsonValue& value) {
    const QByteArray digits = value.toString().toLatin1().toLower();
    const auto isHex = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
    };
    if (digits.size() != Md5Digits || !std::all_of(digits.begin(), digits.end(), isHex))
        return std::nullopt;
    return digits;
}

/// Walks the lists of a description. Stops at the first thing that no honest server sends.
class ListReader final {
public:
    explicit ListReader(std::vector<ListedFile>& files)
        : files_(files) {}

    /// Nothing when all is well, else the reason, untranslated.
    const char* read(const QJsonArray& entries, const QString& folder, int depth) {
        if (depth > DeepestFolder)
            return QT_TRANSLATE_NOOP("UpdateDescription", "目录层级过深");
        for (const QJsonValue& entry : entries) {
            if (const char* const problem = take(entry, folder, depth))
                return problem;
        }
        return nullptr;
    }

private:
    const char* take(const QJsonValue& entry, const QString& folder, int depth) {
        if (!entry.isObject())
            return QT_TRANSLATE_NOOP("UpdateDescription", "条目格式错误");
        if (++entries_ > MostEntries)
            return QT_TRANSLATE_NOOP("UpdateDescription", "条目过多");
        const QJsonObject object = entry.toObject();
        const auto name = dataTree::pathComponent(object.value(QStringLiteral("fileName")).toString());
        if (!name)
            return QT_TRANSLATE_NOOP("UpdateDescription", "文件名非法");
        const QString path = folder.isEmpty() ? *name : folder + QLatin1Char('/') + *name;
        if (path.size() > LongestPath)
            return QT_TRANSLATE_NOOP("UpdateDescription", "路径过长");
        // Windows and others hold names that differ in case or in the way of writing an accent for the same file.
        const QString same = path.normalized(QString::NormalizationForm_C).toCaseFolded();
        if (seen_.contains(same))
            return QT_TRANSLATE_NOOP("UpdateDescription", "文件名重复");
        seen_.insert(same);
        const QJsonValue sublist = object.value(QStringLiteral("sublist"));
        if (sublist.isArray())
            return isUserData(path, true) ? nullptr : read(sublist.toArray(), path, depth + 1);
        const auto md5 = md5From(object.value(QStringLiteral("Md5")));
        if (!md5)
            return QT_TRANSLATE_NOOP("UpdateDescription", "MD5格式错误");
        if (!isUserData(path, false))
            files_.push_back({path, *md5});
        return nullptr;
    }

    std::vector<ListedFile>& files_;
    QSet<QString> seen_;
    int entries_ = 0;
};

} // namespace

QString noDescriptionText() {
    return Texts::tr("服务器地址错误或JSON格式错误!");
}

ParsedDescription parseDescription(const QByteArray& text) {
    if (text.size() > LargestDescription)
        return {std::nullopt, refusal(QT_TRANSLATE_NOOP("UpdateDescription", "文件过大"))};
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    // The misspelling stands in every published description.
    const auto version = wholeNumber(object.value(QStringLiteral("LatestVerison")));
    if (!version)
        return {std::nullopt, noDescriptionText()};
    UpdateDescription description;
    description.version = *version;
    if (*version <= BuiltInVersion)
        return {description, {}};
    const QString updater = object.value(QStringLiteral("UpdateEXEname")).toString();
    const QJsonValue list = object.value(QStringLiteral("Md5List"));
    if (!list.isArray())
        return {std::nullopt, refusal(QT_TRANSLATE_NOOP("UpdateDescription", "没有文件列表"))};
    if (!dataTree::pathComponent(updater) || isUserData(updater, false))
        return {std::nullopt, refusal(QT_TRANSLATE_NOOP("UpdateDescription", "升级程序名非法"))};
    description.updaterName = updater;
    if (const char* const problem = ListReader(description.files).read(list.toArray(), {}, 1))
        return {std::nullopt, refusal(problem)};
    return {description, {}};
}

} // namespace corvanta::update
