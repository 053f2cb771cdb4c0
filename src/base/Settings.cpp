#include "base/Settings.h"

#include "base/JsonText.h"
#include "base/WholeFile.h"
#include "platform/Autostart.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>

namespace keys = corvanta::keys;

Settings::Settings(QString file, QObject* parent)
    : QObject(parent)
    , file_(std::move(file)) {
    publish();
}

Settings::~Settings() = default;

void Settings::load() {
    QFile file(file_);
    if (file.exists()) {
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        const bool readable = file.isOpen();
        file.close();
        bool parsed = false;
        values_ = corvanta::json::parseObject(text, parsed);
        if (!parsed && !(readable && text.trimmed().isEmpty())) {
            qDebug() << "settings could not be read" << file_;
            fileIsKept_ = setAside();
        }
    }
    applyDefaults();
    publish();
}

bool Settings::setAside() {
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    for (int n = 0; n < 100; ++n) {
        const QString kept =
            file_ + QStringLiteral(".damaged-") + stamp + (n == 0 ? QString() : QStringLiteral("-%1").arg(n));
        if (QFile::exists(kept))
            continue;
        if (QFile::rename(file_, kept)) {
            qDebug() << "settings kept as" << kept;
            return true;
        }
        break;
    }
    qDebug() << "settings could not be set aside, they will not be saved";
    return false;
}

void Settings::applyDefaults() {
    const std::initializer_list<std::pair<QString, QVariant>> defaults = {
        {keys::AppName, QStringLiteral("Corvanta")},
        {keys::AlarmDeviceFault, true},
        {keys::AlarmLevel1, true},
        {keys::AlarmLevel2, true},
        {keys::AlarmLevel3, true},
        {keys::AlarmOther, true},
        {keys::WindowMode, QVariantList()},
        {keys::CompanyName, QStringLiteral("视频监控与测量平台")},
        {keys::RestoreState, true},
        {keys::AspectMode, QStringLiteral("原始比例")},
        {keys::LongestOpening, 1},
        {keys::PackingTime, 5},
        {keys::DriveThreshold, 128},
        {keys::AcceptAlarms, true},
        {keys::Proxy, QVariantMap()},
        {keys::ChartZoom, 0},
    };
    for (const auto& [key, value] : defaults) {
        if (!values_.contains(key))
            values_.insert(key, value);
    }
}

void Settings::publish() {
    auto snapshot = std::make_unique<SdkThreadSettings>();
    snapshot->acceptsAlarms = get(keys::AcceptAlarms).toBool();
    const QVariantMap proxy = get(keys::Proxy).toMap();
    if (!proxy.isEmpty())
        snapshot->proxy = ProxySettings::fromMap(proxy);
    const QStringList drives = get(keys::Drives).toStringList();
    for (const QString& drive : drives)
        snapshot->drives.push_back(drive.toStdString());
    snapshot->driveThreshold = get(keys::DriveThreshold).toInt();
    snapshots_.push_back(std::move(snapshot));
    published_.store(snapshots_.back().get(), std::memory_order_release);
}

void Settings::set(const QString& key, const QVariant& value) {
    values_.insert(key, value);
    if (key == keys::AcceptAlarms || key == keys::Proxy || key == keys::Drives || key == keys::DriveThreshold)
        publish();
    if (key == keys::AppName || key == keys::CompanyName) {
        qDebug() << "修改 APP名称";
        emit titleChanged(title());
    }
}

QString Settings::title() const {
    return get(keys::AppName).toString() + QStringLiteral("--") + get(keys::CompanyName).toString();
}

void Settings::setAutostart(bool enabled) {
    const std::filesystem::path program(QCoreApplication::applicationFilePath().toStdU16String());
    if (const std::error_code error = corvanta::platform::setAutostart(enabled, program))
        qDebug() << "start with the system could not be set" << QString::fromStdString(error.message());
}

void Settings::save() {
    if (!fileIsKept_)
        return;
    const QDir folder = QFileInfo(file_).dir();
    if (!folder.exists() && folder.mkpath(QStringLiteral(".")))
        qDebug() << "已经创建新文件";
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(values_)).toJson();
    disk_.post("settings", {}, [file = file_, text] {
        if (const QString problem = corvanta::writeWholeFile(file, text); !problem.isEmpty())
            qDebug() << "settings could not be saved" << problem;
    });
}
