#pragma once

#include "vision/MeasureKind.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

class DeviceModel;
class SdkGateway;

namespace corvanta::vision {

class ImageScannerTHread;

/// Measures the videos that come with alarms: one at a time of each device, and what comes meanwhile is dropped. A
/// device whose camera looks at a code and at the spot of a laser is measured for both. Lives in the GUI thread.
class VideoMeasurer final : public QObject {
    Q_OBJECT
public:
    /// `root` is the data folder. The others outlive it.
    VideoMeasurer(SdkGateway& gateway, const DeviceModel& devices, QString root, QObject* parent = nullptr);
    ~VideoMeasurer() override;

    /// Begins to measure a picture or video of a device, unless one of it is being measured.
    void measure(const QString& ipncId, const QString& path);

    /// Reports the position of a code, as the three texts of `sig_C_point`, to the device that is being told of.
    void report(const QStringList& resultList);

signals:
    /// A code was found in a device's file; `report` reaches that device while receivers are called.
    void sig_C_point(QStringList resultList);

private:
    struct Key {
        QString ipncId;
        MeasureKind kind = MeasureKind::Code;
        friend bool operator<(const Key& a, const Key& b) {
            return a.ipncId != b.ipncId ? a.ipncId < b.ipncId : a.kind < b.kind;
        }
    };
    void start(const Key& key, const QString& path, FileMeasurement measurement);
    void take(const Key& key, const QStringList& resultList);
    void end(const Key& key);
    void send(const Key& key, const QStringList& resultList);

    SdkGateway& gateway_;
    const DeviceModel& devices_;
    const QString root_;
    std::map<Key, std::unique_ptr<ImageScannerTHread>> scanners_; ///< those at work
    QString told_;                                                ///< the device of the signal that is on its way
};

} // namespace corvanta::vision
