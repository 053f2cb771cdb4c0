#include "vision/ImageScannerTHread.h"

#include <QPointer>

#include <utility>

namespace corvanta::vision {

ImageScannerTHread::ImageScannerTHread(const QString& path, FileMeasurement measurement, QObject* parent)
    : BackgroundThread(parent)
    , path_(path)
    , measurement_(std::move(measurement)) {
    connect(this, &BackgroundThread::finished, this, &ImageScannerTHread::tell, Qt::QueuedConnection);
}

ImageScannerTHread::~ImageScannerTHread() {
    ended_ = true;
    join();
}

void ImageScannerTHread::run() {
    result_ = measurement_(path_, [this] { return ended_.load(); });
}

void ImageScannerTHread::tell() {
    join();
    const QPointer<ImageScannerTHread> self(this);
    const bool found = !result_.isEmpty();
    if (found)
        emit sig_C_point(result_);
    if (self != nullptr)
        emit sigDone(found);
}

} // namespace corvanta::vision
