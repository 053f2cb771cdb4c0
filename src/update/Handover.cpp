#include "update/Handover.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <filesystem>

namespace corvanta::update {
namespace {

bool isPlainFile(const QString& path) {
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink();
}

/// Puts a copy of `source` in the place of `target`: all of it or nothing. A link in its place goes, what it points
/// to stays.
bool replace(const QString& source, const QString& target) {
    const QString copy = target + QStringLiteral(".new");
    QFile::remove(copy);
    if (!QFile::copy(source, copy))
        return false;
    QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                    QFileDevice::ExeOwner);
    std::error_code error;
    std::filesystem::rename(copy.toStdU16String(), target.toStdU16String(), error);
    if (error)
        QFile::remove(copy);
    return !error;
}

} // namespace

std::optional<QString> startUpdater(const QString& updaterName, const DownloadFolder& fetched,
                                    const QString& installation) {
    const QString source = fetched.pathOf(updaterName);
    const QString updater = installation + QLatin1Char('/') + updaterName;
    if (isPlainFile(source) && !replace(source, updater))
        return QCoreApplication::translate("Handover", "无法写入安装目录: %1").arg(installation);
    if (!isPlainFile(updater))
        return QCoreApplication::translate("Handover", "未找到升级程序: %1").arg(updaterName);
    if (!QProcess::startDetached(updater, {fetched.path(), installation}, installation))
        return QCoreApplication::translate("Handover", "升级程序启动失败: %1").arg(updaterName);
    qDebug().noquote() << "updater started:" << updater;
    return std::nullopt;
}

} // namespace corvanta::update
