#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

class DeviceModel;
class SdkGateway;

namespace corvanta::vision {

class ImageScannerTHread;

/// Measures the videos that come with alarms: one at a time of each device, and what comes meanwhile is dropped.
/// Lives in the GUI thread.
class VideoMeasurer final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    VideoMeasurer(SdkGateway& gateway, const DeviceModel& devices, QObject* parent = nullptr);
    ~VideoMeasurer() override;

    /// Begins to measure a picture or video of a device, unless one of it is being measured.
    void measure(const QString& ipncId, const QString& path);

    /// Reports a position, as the three texts of `sig_C_point`, to the device that is being told of.
    void report(const QStringList& resultList);

signals:
    /// A device's file was measured; `report` reaches that device while receivers are called.
    void sig_C_point(QStringList resultList);
    /// The measurement of a device is over, and another one may begin.
    void sigDone(QString ipncId);

private:
    void tell(const QString& ipncId, const QStringList& resultList);
    void end(const QString& ipncId);

    SdkGateway& gateway_;
    const DeviceModel& devices_;
    std::map<QString, std::unique_ptr<ImageScannerTHread>> scanners_; ///< those at work, by device
    QString told_;                                                    ///< the device of the signal that is on its way
};

} // namespace corvanta::vision
