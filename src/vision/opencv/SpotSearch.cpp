#include "vision/opencv/SpotSearch.h"

#include "vision/opencv/SpotCandidates.h"
#include "vision/opencv/SpotCentre.h"

#include <QDebug>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta::vision::opencv {

namespace {

constexpr int LeastSide = 3;            // px
constexpr qint64 MostPixels = 64000000; // more than any camera's

/// Blue, green, red and one that means nothing, as `QImage::Format_RGB32` lies in memory.
using Colours = cv::Mat4b;

/// A view of `picture`, which must be of `Format_RGB32` and outlive it.
Colours coloursOf(const QImage& picture) {
    // The data is only read; OpenCV's headers know no constant ones.
    auto* const data = const_cast<uchar*>(picture.constBits());
    const cv::Mat pixels(picture.height(), picture.width(), CV_8UC4, data,
                         static_cast<std::size_t>(picture.bytesPerLine()));
    return Colours(pixels);
}

bool isUsable(const QImage& picture) {
    return picture.width() >= LeastSide && picture.height() >= LeastSide &&
           static_cast<qint64>(picture.width()) * picture.height() <= MostPixels;
}

/// The channel of a colour in `Colours`; `Any` has none.
int channelOf(SpotColour colour) {
    return colour == SpotColour::Red ? 2 : colour == SpotColour::Green ? 1 : 0;
}

/// The light that a spot of this colour is looked for in; of any colour whatever channel is brightest.
cv::Mat1b lightOf(const Colours& picture, SpotColour colour) {
    cv::Mat light;
    if (colour != SpotColour::Any) {
        cv::extractChannel(picture, light, channelOf(colour));
        return light;
    }
    std::array<cv::Mat, 4> channels;
    cv::split(picture, channels.data());
    cv::max(channels[0], channels[1], light);
    cv::max(light, channels[2], light);
    return light;
}

/// Numbers as `SpotSettings` describes them, whatever came in.
SpotSettings inBounds(SpotSettings settings) {
    const auto bounded = [](double value, double low, double high, double otherwise) {
        return std::isfinite(value) ? std::clamp(value, low, high) : otherwise;
    };
    const SpotSettings usual;
    settings.threshold = bounded(settings.threshold, 1, 255, usual.threshold);
    settings.smallestDiameter =
        bounded(settings.smallestDiameter, 1, SpotSettings::GreatestDiameter, usual.smallestDiameter);
    settings.largestDiameter = bounded(settings.largestDiameter, settings.smallestDiameter,
                                       SpotSettings::GreatestDiameter, usual.largestDiameter);
    settings.roundness = bounded(settings.roundness, 0, 1, usual.roundness);
    return settings;
}

/// By how much more than what is round it a spot shines in each channel. The core of a spot is often white, since all
/// channels are at their end there; what surrounds it tells the colour.
cv::Vec3d glowOf(const Colours& picture, const Colours& reference, const SpotCandidate& spot) {
    constexpr int atItsEnd = 250; // grey levels from which a channel may have been cut off
    const int margin = std::max(3, static_cast<int>(std::ceil(spot.diameter)));
    const cv::Rect wide = cv::Rect(spot.box.x - margin, spot.box.y - margin, spot.box.width + 2 * margin,
                                   spot.box.height + 2 * margin) &
                          cv::Rect({}, picture.size());
    const double inner = spot.diameter; // px from the middle; what is nearer is the spot's glow, what is not is not
    cv::Vec3d glow;
    cv::Vec3d around;
    cv::Vec3d whole;
    int glowing = 0;
    int surrounding = 0;
    int all = 0;
    for (int row = wide.y; row < wide.br().y; ++row) {
        for (int column = wide.x; column < wide.br().x; ++column) {
            const cv::Vec4b& here = picture(row, column);
            cv::Vec3d levels(here[0], here[1], here[2]);
            if (!reference.empty()) {
                const cv::Vec4b& without = reference(row, column);
                levels -= cv::Vec3d(without[0], without[1], without[2]);
            }
            const double away = std::hypot(column + 0.5 - spot.middle.x, row + 0.5 - spot.middle.y);
            if (away > inner) {
                around += levels;
                ++surrounding;
                continue;
            }
            whole += levels;
            ++all;
            if (std::max({here[0], here[1], here[2]}) < atItsEnd) {
                glow += levels;
                ++glowing;
            }
        }
    }
    if (surrounding > 0)
        around *= 1.0 / surrounding;
    constexpr int enough = 6; // px
    if (glowing >= enough)
        return glow * (1.0 / glowing) - around;
    return all > 0 ? whole * (1.0 / all) - around : cv::Vec3d();
}

bool hasColour(const Colours& picture, const Colours& reference, const SpotCandidate& spot, SpotColour colour) {
    constexpr double clearly = 1.4; // times as much as in each other channel; a warm lamp is below
    if (colour == SpotColour::Any)
        return true;
    const cv::Vec3d glow = glowOf(picture, reference, spot);
    const int own = channelOf(colour);
    for (int channel = 0; channel < 3; ++channel) {
        if (channel != own && glow[own] < clearly * glow[channel])
            return false;
    }
    return glow[own] > 0;
}

/// Why a candidate is none; in the order in which the checks stand.
SpotProblem problemOf(const SpotCandidate& one, const Colours& picture, const Colours& reference,
                      const SpotSettings& settings) {
    if (one.peak < settings.threshold)
        return SpotProblem::NothingBright;
    if (one.diameter < settings.smallestDiameter)
        return SpotProblem::TooSmall;
    if (one.diameter > settings.largestDiameter)
        return SpotProblem::TooLarge;
    if (!hasColour(picture, reference, one, settings.colour))
        return SpotProblem::WrongColour;
    if (one.isCut) // before its shape is judged, which the border made
        return SpotProblem::CutByBorder;
    return one.roundness < settings.roundness ? SpotProblem::NotRound : SpotProblem::None;
}

/// Larger: the candidate came further.
int wayOf(SpotProblem problem) {
    constexpr std::array order = {SpotProblem::NothingBright, SpotProblem::TooSmall, SpotProblem::TooLarge,
                                  SpotProblem::WrongColour,   SpotProblem::NotRound, SpotProblem::CutByBorder};
    return static_cast<int>(std::find(order.begin(), order.end(), problem) - order.begin());
}

struct Choice {
    const SpotCandidate* best = nullptr;
    SpotProblem problem = SpotProblem::NothingBright;
};

Choice choose(const std::vector<SpotCandidate>& candidates, const Colours& picture, const Colours& reference,
              const SpotSettings& settings) {
    constexpr double aboutAsGood = 0.6; // of the best one's light; less is a reflection
    Choice choice;
    double second = 0;
    for (const SpotCandidate& one : candidates) {
        const SpotProblem problem = problemOf(one, picture, reference, settings);
        if (problem != SpotProblem::None) {
            if (wayOf(problem) > wayOf(choice.problem))
                choice.problem = problem;
            continue;
        }
        if (choice.best == nullptr || one.mass > choice.best->mass) {
            second = choice.best == nullptr ? 0 : choice.best->mass;
            choice.best = &one;
        } else {
            second = std::max(second, one.mass);
        }
    }
    if (choice.best != nullptr && second >= aboutAsGood * choice.best->mass)
        return {nullptr, SpotProblem::Several};
    return choice;
}

SpotSearch search(const QImage& picture, const QImage& reference, const SpotSettings& settings) {
    const Colours colours = coloursOf(picture);
    const Colours without = reference.isNull() ? Colours() : coloursOf(reference);
    const cv::Mat1b light = lightOf(colours, settings.colour);
    const cv::Mat1b lightWithout = without.empty() ? cv::Mat1b() : lightOf(without, settings.colour);
    const StandingOut standingOut =
        StandingOut::of(light, lightWithout, settings.smallestDiameter, settings.largestDiameter);
    const std::vector<SpotCandidate> candidates = findCandidates(standingOut, settings.threshold);
    const Choice choice = choose(candidates, colours, without, settings);
    if (choice.best == nullptr)
        return {std::nullopt, choice.problem};
    const cv::Point2d centre = spotCentre(light, lightWithout, choice.best->middle, choice.best->diameter);
    return {Spot{QPointF(centre.x, centre.y), choice.best->diameter, choice.best->roundness, choice.best->peak},
            SpotProblem::None};
}

} // namespace

SpotSearch findSpot(const QImage& picture, const QImage& reference, const SpotSettings& settings) {
    if (!isUsable(picture))
        return {std::nullopt, SpotProblem::NoPicture};
    if (!reference.isNull() && reference.size() != picture.size())
        return {std::nullopt, SpotProblem::ReferenceDiffers};
    const QImage colours = picture.convertToFormat(QImage::Format_RGB32);
    const QImage without = reference.convertToFormat(QImage::Format_RGB32);
    if (colours.isNull() || (!reference.isNull() && without.isNull())) // no memory
        return {std::nullopt, SpotProblem::NoPicture};
    try {
        return search(colours, without, inBounds(settings));
    } catch (const cv::Exception& error) {
        qDebug() << "no spot was looked for" << error.what();
        return {std::nullopt, SpotProblem::NoPicture};
    }
}

} // namespace corvanta::vision::opencv
