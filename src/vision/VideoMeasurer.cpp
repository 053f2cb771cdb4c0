#include "vision/VideoMeasurer.h"

#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "vision/ImageScannerTHread.h"
#include "vision/QrFile.h"
#include "vision/QrSensor.h"

#include <QDebug>
#include <QScopedValueRollback>

namespace corvanta::vision {

VideoMeasurer::VideoMeasurer(SdkGateway& gateway, const DeviceModel& devices, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , devices_(devices) {}

VideoMeasurer::~VideoMeasurer() = default;

void VideoMeasurer::measure(const QString& ipncId, const QString& path) {
    const DeviceRecord* const device = devices_.device(ipncId);
    if (device == nullptr || qrInfoOf(*device).isEmpty()) {
        qDebug() << "no code is set up for the video of an alarm" << ipncId << path;
        return;
    }
    if (scanners_.count(ipncId) > 0) {
        qDebug() << "a video of the device is still being measured, this one is not" << ipncId << path;
        return;
    }
    auto scanner = std::make_unique<ImageScannerTHread>(path, qrMeasurement(QrSetup::fromMap(qrInfoOf(*device))));
    connect(scanner.get(), &ImageScannerTHread::sig_C_point, this,
            [this, ipncId](const QStringList& resultList) { tell(ipncId, resultList); });
    connect(scanner.get(), &ImageScannerTHread::sigDone, this, [this, ipncId, path](bool found) {
        if (!found)
            qDebug() << "no code was found" << ipncId << path;
        end(ipncId);
    });
    scanner->start();
    scanners_.emplace(ipncId, std::move(scanner));
}

void VideoMeasurer::tell(const QString& ipncId, const QStringList& resultList) {
    const QScopedValueRollback told(told_, ipncId);
    emit sig_C_point(resultList);
}

void VideoMeasurer::end(const QString& ipncId) {
    const auto ended = scanners_.find(ipncId);
    if (ended != scanners_.end()) {
        ImageScannerTHread* const scanner = ended->second.release(); // what tells of this
        scanner->setParent(this);
        scanner->deleteLater();
        scanners_.erase(ended);
    }
    emit sigDone(ipncId);
}

void VideoMeasurer::report(const QStringList& resultList) {
    const DeviceRecord* const device = devices_.device(told_);
    if (device == nullptr)
        return;
    const QVariantMap initial = qrInfoOf(*device).value(QStringLiteral("inintDataList")).toMap();
    const QVariantList values = uploadOf(qrInputsOf(*device), initial, resultList);
    if (values.isEmpty()) {
        qDebug() << "the device has no inputs for the position of its code" << told_;
        return;
    }
    const QVariantMap commands = {{QStringLiteral("uploadinputs"), values}};
    gateway_.request(requests::deviceRequest(QStringLiteral("上报采集输入"), {{QStringLiteral("ipncid"), told_},
                                                                              {QStringLiteral("setcmds"), commands}}),
                     this, [id = told_](const QVariantMap& reply) {
                         if (!serverErrors::isSuccess(reply))
                             qDebug() << "the position of a code was not taken" << id << reply;
                     });
}

} // namespace corvanta::vision
