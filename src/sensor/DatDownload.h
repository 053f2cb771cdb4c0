#pragma once

#include <QObject>
#include <QSet>
#include <QString>

#include <chrono>

class AppEvents;
class RecordingStorage;
class SdkGateway;

namespace corvanta::sensor {

/// Fetches the data files of alarms from their devices, when `AppEvents::sig_DownDatFile` names one: at once, and
/// again when the seconds behind the alarm have been written, too. GUI thread.
class DatDownload final : public QObject {
    Q_OBJECT
public:
    /// How long a device goes on writing after an alarm.
    static constexpr std::chrono::seconds Behind{10};

    /// All outlive it.
    DatDownload(SdkGateway& gateway, AppEvents& events, RecordingStorage& storage, QObject* parent = nullptr);

    /// `name` comes from outside: what is no plain name of a file is left out with one debug line.
    void fetch(const QString& ipncId, const QString& name);

    /// For tests, which have no ten seconds.
    void setBehind(std::chrono::milliseconds behind) { behind_ = behind; }

signals:
    /// A file is there, or has been replaced by the one with all seconds.
    void sigStored(QString ipncId, QString path);

private:
    void load(const QString& ipncId, const QString& name, const QString& path, bool isAgain);

    SdkGateway& gateway_;
    RecordingStorage& storage_;
    QSet<QString> underWay_; ///< paths
    std::chrono::milliseconds behind_ = Behind;
};

} // namespace corvanta::sensor
