#include "media/loop/MeasuringPainter.h"

#include <opencv2/imgproc.hpp>

#include <array>

namespace ipncsdk::media {

namespace {

using scene::MeasuringScene;

MeasuringScene::Kind kindOf(int scene) {
    return scene == codeScene ? MeasuringScene::Kind::Code : MeasuringScene::Kind::Laser;
}

MeasuringScene::Exhibit exhibitOf(int exhibit) {
    return exhibit == 0 ? MeasuringScene::Exhibit::Usual : MeasuringScene::Exhibit::Setup;
}

} // namespace

int MeasuringPainter::lengthOf(int scene, int exhibit) {
    return MeasuringScene::periodOf(kindOf(scene), exhibitOf(exhibit)) * loopFrameRate;
}

MeasuringPainter::MeasuringPainter(const LoopKey& key)
    : scene_(kindOf(key.source.scene), exhibitOf(key.exhibit), {key.width(), key.height()}) {
    backdrop_.resize(key.width(), key.height());
    convert(scene_.backdrop(), {0, 0, backdrop_.width, backdrop_.height}, backdrop_);
}

void MeasuringPainter::enter(const Window& window) {
    window_ = window;
    const MeasuringScene::Cutout cutout{{static_cast<double>(window.origin.x / Canvas::sceneWidth),
                                         static_cast<double>(window.origin.y / Canvas::sceneHeight)},
                                        static_cast<double>(window.magnification)};
    scene_.aim(cutout);
    convert(scene_.backdrop(), {0, 0, backdrop_.width, backdrop_.height}, backdrop_);
    lastSeconds_.reset();
}

void MeasuringPainter::paint(int frame, const Window& window, Picture& picture) {
    if (!(window == window_))
        enter(window);
    const double seconds = static_cast<double>(frame) / loopFrameRate;
    if (!lastSeconds_ || !scene_.isSameAt(*lastSeconds_, seconds)) {
        scene_.backdrop().copyTo(canvas_);
        last_ = backdrop_;
        convert(canvas_, scene_.paint(seconds, canvas_), last_);
        lastSeconds_ = seconds;
    }
    picture = last_;
}

void MeasuringPainter::convert(const cv::Mat3b& from, const cv::Rect& area, Picture& to) {
    if (area.empty())
        return;
    // Full range by the formula of JPEG files, as all pictures here; OpenCV's own I420 is of limited range.
    cv::Mat3b converted;
    cv::cvtColor(from(area), converted, cv::COLOR_BGR2YCrCb);
    std::array<cv::Mat, 3> planes;
    cv::split(converted, planes.data());
    planes[0].copyTo(cv::Mat(to.height, to.width, CV_8U, to.plane(0))(area));
    const cv::Rect half(area.x / 2, area.y / 2, area.width / 2, area.height / 2);
    for (const int plane : {1, 2}) {
        cv::Mat smaller;
        // OpenCV has the red difference before the blue one.
        cv::resize(planes.at(static_cast<std::size_t>(3 - plane)), smaller, half.size(), 0, 0, cv::INTER_AREA);
        smaller.copyTo(cv::Mat(to.height / 2, to.width / 2, CV_8U, to.plane(plane))(half));
    }
}

} // namespace ipncsdk::media
