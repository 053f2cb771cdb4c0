#include "vision/setup/CalibrationRun.h"

#include "vision/MediaPictures.h"
#include "vision/VisionBackend.h"
#include "vision/setup/PhotoSeries.h"

#include <QCoreApplication>

#include <utility>

namespace corvanta::vision {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(CalibrationRun)
};

QString ofPhoto(const QString& text, int photo) {
    return Texts::tr("第%1张：%2").arg(QString::number(photo), text);
}

} // namespace

QString stepText(const CalibrationStep& step) {
    using Kind = CalibrationStep::Kind;
    switch (step.kind) {
    case Kind::Looked:
        return ofPhoto(Texts::tr("已找到角点"), step.photo);
    case Kind::Unreadable:
        return ofPhoto(QStringLiteral("Image read fail!"), step.photo);
    case Kind::NoBoard:
        return ofPhoto(Texts::tr("没有检测到棋盘,请重新拍照"), step.photo);
    case Kind::OtherSize:
        return ofPhoto(Texts::tr("照片尺寸与之前的不同,请重新拍照"), step.photo);
    case Kind::TooFew:
        return Texts::tr("至少需要%1张可用的照片").arg(PhotoSeries::Fewest);
    case Kind::Calibrating:
        return Texts::tr("开始标定………………");
    case Kind::Done:
        break;
    case Kind::NoBackend:
        return noVisionText();
    case Kind::Failed:
        return Texts::tr("标定失败,请换用角度和位置不同的照片");
    }
    return Texts::tr("标定完成!") + QLatin1Char('\n') + Texts::tr("重投影误差：%1 像素").arg(step.error, 0, 'g', 3);
}

CalibrationRun::CalibrationRun(QStringList paths, const BoardShape& shape, QObject* parent)
    : DialogTask(parent)
    , paths_(std::move(paths))
    , shape_(shape) {}

CalibrationRun::~CalibrationRun() {
    join();
}

std::vector<CalibrationStep> CalibrationRun::takeSteps() {
    const std::lock_guard lock(mutex_);
    return std::exchange(steps_, {});
}

void CalibrationRun::tell(const CalibrationStep& step) {
    {
        const std::lock_guard lock(mutex_);
        steps_.push_back(step);
    }
    emit sigSteps();
}

void CalibrationRun::run() {
    using Kind = CalibrationStep::Kind;
    if (visionBackend() == nullptr) {
        tell({.kind = Kind::NoBackend});
        return;
    }
    for (int photo = 1; photo <= paths_.size(); ++photo) {
        if (isGivenUp() || !look(photo))
            return;
    }
    if (seen_.size() < PhotoSeries::Fewest) {
        tell({.kind = Kind::TooFew});
        return;
    }
    tell({.kind = Kind::Calibrating});
    result_ = calibrate(seen_, shape_, size_);
    if (result_)
        tell({.kind = Kind::Done, .error = result_->reprojectionError});
    else
        tell({.kind = Kind::Failed});
}

bool CalibrationRun::look(int photo) {
    using Kind = CalibrationStep::Kind;
    const QImage picture = readPicture(paths_[photo - 1]);
    if (picture.isNull()) {
        tell({Kind::Unreadable, photo});
        return true;
    }
    const auto corners = findBoard(picture, shape_);
    const bool isOfSize = size_.isEmpty() || picture.size() == size_;
    if (!corners || !isOfSize) {
        tell({corners ? Kind::OtherSize : Kind::NoBoard, photo});
        return false;
    }
    size_ = picture.size();
    seen_ += *corners;
    tell({Kind::Looked, photo});
    return true;
}

} // namespace corvanta::vision
