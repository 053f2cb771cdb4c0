#include "vision/LaserMeasure.h"

#include "vision/QrPose.h"

#include <QCoreApplication>

#include <cmath>
#include <utility>

namespace corvanta::vision {

namespace {

constexpr int Digits = 6; // significant ones of a position

QString textOf(float value) {
    return QString::number(static_cast<double>(value), 'g', Digits);
}

} // namespace

QStringList LaserPosition::texts() const {
    return {textOf(x), textOf(y)};
}

std::optional<LaserPosition> LaserPosition::fromTexts(const QStringList& texts) {
    if (texts.size() != 2)
        return std::nullopt;
    bool isX = false;
    bool isY = false;
    const LaserPosition position{texts[0].toFloat(&isX), texts[1].toFloat(&isY)};
    const bool isPosition = isX && isY && std::isfinite(position.x) && std::isfinite(position.y);
    return isPosition ? std::optional(position) : std::nullopt;
}

QString LaserMeter::Measurement::problemText() const {
    return isBeyond ? QCoreApplication::translate("LaserMeter", "光斑不在标定平面上") : vision::problemText(problem);
}

LaserMeter::LaserMeter(const SpotSettings& spot, const LaserScale& scale, const QImage& reference)
    : spot_(spot)
    , scale_(scale)
    , reference_(reference) {}

std::optional<LaserMeter> LaserMeter::make(const LaserInfo& info, const QImage& reference) {
    const auto scale = info.makeScale();
    if (!scale || info.measureProblem())
        return std::nullopt;
    // Measured again and again, so it is brought into the form in which it is looked at once.
    return LaserMeter(info.spot, *scale, reference.convertToFormat(QImage::Format_RGB32));
}

LaserMeter::Measurement LaserMeter::measure(const QImage& picture) const {
    const SpotSearch search = findSpot(picture, reference_, spot_);
    Measurement result;
    result.spot = search.spot;
    result.problem = search.problem;
    if (!search.spot)
        return result;
    const auto place = scale_.toPlace(search.spot->centre);
    result.isBeyond = !place;
    if (place)
        result.position = LaserPosition{static_cast<float>(place->x()), static_cast<float>(place->y())};
    return result;
}

std::optional<LaserPosition> trimmedMean(const std::vector<LaserPosition>& positions) {
    if (positions.empty())
        return std::nullopt;
    std::vector<float> along;
    std::vector<float> across;
    for (const LaserPosition& position : positions) {
        along.push_back(position.x);
        across.push_back(position.y);
    }
    return LaserPosition{trimmedMean(std::move(along)), trimmedMean(std::move(across))};
}

QVariantList laserUpload(const LaserInfo& info, const QStringList& position) {
    QVariantList values;
    const auto measured = LaserPosition::fromTexts(position);
    if (!measured || !info.initial)
        return values;
    for (const LaserInput& input : info.inputs) {
        if (!input.isUpload)
            continue;
        const float moved = input.axis == LaserInput::Axis::X ? measured->x - static_cast<float>(info.initial->x())
                                                              : measured->y - static_cast<float>(info.initial->y());
        values += QVariantMap{{QStringLiteral("pid"), input.pid},
                              {QStringLiteral("ifpid"), input.ifpid},
                              {QStringLiteral("ifname"), input.ifname},
                              {QStringLiteral("type"), input.typeText()},
                              {QStringLiteral("data"), textOf(moved)}};
    }
    return values;
}

} // namespace corvanta::vision
