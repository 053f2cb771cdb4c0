#include "storage/ui/PictureLoader.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

constexpr qint64 LargestFile = 64LL << 20; // bytes
constexpr qint64 MostPixels = 100LL * 1000 * 1000;

/// A picture file as an image; null when it is none, or one too large to be shown.
QImage readPicture(const QString& path, const QSize& bound) {
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > LargestFile) {
        qDebug() << "no picture file" << path;
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // What the name says is what is tried: other formats may do more than be a picture.
    QImageReader reader(&file, "jpg");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > MostPixels) {
        qDebug() << "no picture" << path << size;
        return {};
    }
    if (!bound.isEmpty() && (size.width() > bound.width() || size.height() > bound.height()))
        reader.setScaledSize(size.scaled(bound, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage image = reader.read();
    if (image.isNull())
        qDebug() << "picture cannot be read" << path << reader.errorString();
    return image;
}

} // namespace

PictureLoader::PictureLoader(QObject* parent)
    : QObject(parent)
    , thread_([this] { run(); }) {}

PictureLoader::~PictureLoader() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
        waiting_.clear();
    }
    changed_.notify_one();
    thread_.join();
}

void PictureLoader::request(const QString& path, const QSize& bound) {
    {
        Wish wish{path.toStdU16String(), bound.width(), bound.height()};
        const std::lock_guard lock(mutex_);
        waiting_.erase(std::remove_if(waiting_.begin(), waiting_.end(),
                                      [&wish](const Wish& other) { return other.path == wish.path; }),
                       waiting_.end());
        waiting_.push_back(std::move(wish));
        if (waiting_.size() > MostWaiting)
            waiting_.pop_front();
    }
    changed_.notify_one();
}

void PictureLoader::forget() {
    const std::lock_guard lock(mutex_);
    waiting_.clear();
}

void PictureLoader::run() {
    while (true) {
        Wish wish;
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
            if (ends_)
                return;
            wish = std::move(waiting_.back());
            waiting_.pop_back();
        }
        // Alone with this thread until it is handed over, and with the other one from then on.
        const auto image = std::make_shared<QImage>(
            readPicture(QString::fromStdU16String(wish.path), QSize(wish.width, wish.height)));
        results_.post([this, path = std::move(wish.path), image] {
            emit sigLoaded(QString::fromStdU16String(path), std::move(*image));
        });
    }
}
