#include "vision/LaserSpot.h"

#include "vision/VisionBackend.h"

#include <QCoreApplication>

namespace corvanta::vision {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LaserSpot)
};

} // namespace

QString problemText(SpotProblem problem) {
    switch (problem) {
    case SpotProblem::None:
        return {};
    case SpotProblem::NoPicture:
        return Texts::tr("没有可用的图片");
    case SpotProblem::ReferenceDiffers:
        return Texts::tr("参考图与图片大小不一致,请重新拍参考图");
    case SpotProblem::NothingBright:
        return Texts::tr("没有找到足够亮的光斑");
    case SpotProblem::WrongColour:
        return Texts::tr("光斑颜色不符");
    case SpotProblem::TooSmall:
        return Texts::tr("光斑太小");
    case SpotProblem::TooLarge:
        return Texts::tr("光斑太大");
    case SpotProblem::NotRound:
        return Texts::tr("光斑不够圆");
    case SpotProblem::CutByBorder:
        return Texts::tr("光斑超出画面边缘");
    case SpotProblem::Several:
        return Texts::tr("画面中有多个光斑");
    case SpotProblem::NoBackend:
        return noVisionText();
    }
    return {};
}

SpotSearch findSpot(const QImage& picture, const QImage& reference, const SpotSettings& settings) {
    const VisionBackend* const backend = visionBackend();
    return backend != nullptr ? backend->findSpot(picture, reference, settings)
                              : SpotSearch{std::nullopt, SpotProblem::NoBackend};
}

} // namespace corvanta::vision
