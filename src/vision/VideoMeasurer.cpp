#include "vision/VideoMeasurer.h"

#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "vision/ImageScannerTHread.h"

#include <QDebug>
#include <QScopedValueRollback>

#include <utility>

namespace corvanta::vision {

VideoMeasurer::VideoMeasurer(SdkGateway& gateway, const DeviceModel& devices, QString root, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , devices_(devices)
    , root_(std::move(root)) {}

VideoMeasurer::~VideoMeasurer() = default;

void VideoMeasurer::measure(const QString& ipncId, const QString& path) {
    const DeviceRecord* const device = devices_.device(ipncId);
    bool isSetUp = false;
    for (const MeasureKind kind : {MeasureKind::Code, MeasureKind::LaserSpot}) {
        auto measurement = device == nullptr ? std::nullopt : measurementOf(*device, kind, root_);
        if (!measurement)
            continue;
        isSetUp = true;
        start({ipncId, kind}, path, std::move(*measurement));
    }
    if (!isSetUp)
        qDebug() << "nothing to be measured is set up for the video of an alarm" << ipncId << path;
}

void VideoMeasurer::start(const Key& key, const QString& path, FileMeasurement measurement) {
    if (scanners_.count(key) > 0) {
        qDebug() << "a video of the device is still being measured, this one is not" << key.ipncId << path;
        return;
    }
    auto scanner = std::make_unique<ImageScannerTHread>(path, std::move(measurement));
    connect(scanner.get(), &ImageScannerTHread::sig_C_point, this,
            [this, key](const QStringList& resultList) { take(key, resultList); });
    connect(scanner.get(), &ImageScannerTHread::sigDone, this, [this, key, path](bool found) {
        if (!found)
            qDebug() << "nothing was found to be measured" << key.ipncId << path;
        end(key);
    });
    scanner->start();
    scanners_.emplace(key, std::move(scanner));
}

void VideoMeasurer::take(const Key& key, const QStringList& resultList) {
    if (key.kind != MeasureKind::Code)
        return send(key, resultList);
    const QScopedValueRollback told(told_, key.ipncId);
    emit sig_C_point(resultList);
}

void VideoMeasurer::end(const Key& key) {
    const auto ended = scanners_.find(key);
    if (ended == scanners_.end())
        return;
    ImageScannerTHread* const scanner = ended->second.release(); // what tells of this
    scanner->setParent(this);
    scanner->deleteLater();
    scanners_.erase(ended);
}

void VideoMeasurer::report(const QStringList& resultList) {
    send({told_, MeasureKind::Code}, resultList);
}

void VideoMeasurer::send(const Key& key, const QStringList& resultList) {
    const DeviceRecord* const device = devices_.device(key.ipncId);
    if (device == nullptr)
        return;
    const QVariantList values = uploadOf(*device, key.kind, resultList);
    if (values.isEmpty()) {
        qDebug() << "the device has no inputs for what was measured" << key.ipncId;
        return;
    }
    const QVariantMap commands = {{QStringLiteral("uploadinputs"), values}};
    gateway_.request(requests::deviceRequest(QStringLiteral("上报采集输入"), {{QStringLiteral("ipncid"), key.ipncId},
                                                                              {QStringLiteral("setcmds"), commands}}),
                     this, [ipncId = key.ipncId](const QVariantMap& reply) {
                         if (!serverErrors::isSuccess(reply))
                             qDebug() << "what was measured was not taken" << ipncId << reply;
                     });
}

} // namespace corvanta::vision
