#include "map/ui/MapPictureLoader.h"

#include <QCoreApplication>

#include <utility>

namespace corvanta::map {

MapPictureLoader::MapPictureLoader(const QString& path, QObject* parent)
    : BackgroundThread(parent)
    , path_(path.toStdU16String()) {}

MapPictureLoader::~MapPictureLoader() {
    join();
}

PicturePyramid MapPictureLoader::take() {
    join();
    return std::move(picture_);
}

void MapPictureLoader::letGo() {
    disconnect(this, &BackgroundThread::finished, nullptr, nullptr);
    setParent(QCoreApplication::instance());
    connect(this, &BackgroundThread::finished, this, &QObject::deleteLater);
}

void MapPictureLoader::run() {
    picture_ = PicturePyramid::read(QString::fromStdU16String(path_));
}

} // namespace corvanta::map
