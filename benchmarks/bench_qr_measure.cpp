// Measuring printed codes: milliseconds an image, against zbarimg and against OpenCV's own detector on the same
// pictures, with the share found by each; and a video against the time that it plays.

#include "scene/Photographer.h"
#include "vision/MatrixText.h"
#include "vision/MediaPictures.h"
#include "vision/QrFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>
#include <sched.h>

#include <chrono>
#include <cstdio>
#include <random>

namespace vision = corvanta::vision;
namespace scene = ipncsdk::scene;

namespace {

constexpr int Pictures = 40;
constexpr double CodeWidth = 180; // mm
constexpr int VideoFrames = 250;
constexpr double VideoRate = 25;

double millisecondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

void print(const std::string& name, double figure, const char* unit, const char* peer, double theirs) {
    std::printf("%s %.2f %s vs %s %.2f ratio %.2f\n", name.c_str(), figure, unit, peer, theirs, figure / theirs);
    std::fflush(stdout);
}

vision::QrPose poseFor(const scene::Lens& lens) {
    const cv::Matx33d matrix = lens.matrix();
    return *vision::QrPose::make({vision::matrixText({3, 3, {std::begin(matrix.val), std::end(matrix.val)}}),
                                  vision::matrixText({1, 5, {lens.distortion.begin(), lens.distortion.end()}}),
                                  QString::number(CodeWidth)});
}

/// Pictures as alarms bring them: near and far, turned and tilted, blurred and dim.
std::vector<cv::Mat> photographs(const scene::Lens& lens) {
    const scene::Photographer photographer(lens);
    const scene::Print code = scene::codePrint("CORVANTA-1", CodeWidth);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-1, 1);
    std::vector<cv::Mat> pictures;
    for (int i = 0; i < Pictures; ++i) {
        const double distance = 550 + 200 * any(random);
        const auto place = scene::Pose::turned({35 * any(random), 35 * any(random), 180 * any(random)},
                                               {100 * any(random), 50 * any(random), distance});
        scene::Flaws flaws;
        flaws.blur = 1 + any(random);
        flaws.noise = 6 + 6 * any(random);
        flaws.gradient = 0.35 + 0.35 * any(random);
        flaws.contrast = 0.7 + 0.3 * any(random);
        flaws.seed = static_cast<std::uint64_t>(i + 1);
        pictures.push_back(photographer.photograph(code, place, flaws));
    }
    return pictures;
}

void measurePictures(const cv::Size& size) {
    const scene::Lens lens = scene::Lens{}.scaled(size);
    const vision::QrPose pose = poseFor(lens);
    const std::vector<cv::Mat> pictures = photographs(lens);
    const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height);
    const QTemporaryDir folder;
    QStringList files;
    for (const cv::Mat& picture : pictures) {
        files += folder.filePath(QStringLiteral("%1.png").arg(files.size()));
        QImage(picture.data, picture.cols, picture.rows, static_cast<int>(picture.step), QImage::Format_Grayscale8)
            .save(files.last());
    }
    // Files against files: what zbarimg does begins with reading them.
    int found = 0;
    const double ours = millisecondsOf([&] {
        for (const QString& file : files)
            found += vision::measureFile(file, pose).has_value() ? 1 : 0;
    });
    int theirs = 0;
    const double zbarimg = millisecondsOf([&] {
        QProcess process;
        process.start(QStringLiteral("zbarimg"), QStringList{QStringLiteral("-q"), QStringLiteral("--raw")} + files);
        process.waitForFinished(-1);
        theirs = process.readAllStandardOutput().count("CORVANTA-1");
    });
    print("qr_measure_" + name, ours / Pictures, "ms", "zbarimg", zbarimg / Pictures);
    print("qr_found_" + name, 100.0 * found / Pictures, "%", "zbarimg", 100.0 * theirs / Pictures);
    // Pictures in memory against the detector.
    const auto reader = vision::visionBackend()->makeCodeReader();
    const double inMemory = millisecondsOf([&] {
        for (const cv::Mat& picture : pictures)
            (void)pose.measure(reader->find({picture.data, picture.cols, picture.rows}));
    });
    cv::QRCodeDetector detector;
    int detected = 0;
    const double opencv = millisecondsOf([&] {
        std::vector<cv::Point2f> corners;
        for (const cv::Mat& picture : pictures)
            detected += detector.detect(picture, corners) ? 1 : 0; // Debian builds it without the reading of codes
    });
    print("qr_measure_memory_" + name, inMemory / Pictures, "ms", "opencv", opencv / Pictures);
    print("qr_found_memory_" + name, 100.0 * found / Pictures, "%", "opencv", 100.0 * detected / Pictures);
}

/// A video of a code that moves, as a camera's.
bool makeVideo(const QString& file, const scene::Lens& lens) {
    const scene::Photographer photographer(lens);
    const scene::Print code = scene::codePrint("CORVANTA-1", 100);
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 QStringLiteral("-v error -y -f rawvideo -pix_fmt gray -s 1280x720 -r 25 -i - -c:v libx264 -preset "
                                "veryfast -g 50 -pix_fmt yuv420p")
                         .split(QLatin1Char(' ')) +
                     QStringList{file});
    if (!ffmpeg.waitForStarted(-1))
        return false;
    for (int i = 0; i < VideoFrames; ++i) {
        const double phase = 2 * CV_PI * i / VideoFrames;
        const auto place = scene::Pose::turned(
            {10, 15, 5}, {60 * std::cos(phase), 30 * std::sin(phase), 600 + 40 * std::sin(2 * phase)});
        scene::Flaws flaws;
        flaws.blur = 0.8;
        flaws.noise = 3;
        flaws.seed = static_cast<std::uint64_t>(i + 1);
        const cv::Mat picture = photographer.photograph(code, place, flaws);
        ffmpeg.write(reinterpret_cast<const char*>(picture.data), static_cast<qint64>(picture.total()));
        ffmpeg.waitForBytesWritten(-1);
    }
    ffmpeg.closeWriteChannel();
    return ffmpeg.waitForFinished(-1) && ffmpeg.exitCode() == 0;
}

void measureVideo() {
    const scene::Lens lens;
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("video.avi"));
    if (!makeVideo(file, lens))
        return;
    const vision::QrPose pose = poseFor(lens);
    bool isFound = false;
    const double all = millisecondsOf([&] { isFound = vision::measureFile(file, pose).has_value(); });
    // One core, for all threads of this program.
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(0, &one);
    sched_setaffinity(0, sizeof one, &one);
    const double alone =
        millisecondsOf([&] { isFound = isFound && vision::measureFile(file, pose, {}, 1).has_value(); });
    if (!isFound)
        std::fputs("the video shows no code\n", stderr);
    const double plays = VideoFrames / VideoRate;
    print("qr_video_1280x720_one_core", alone / 1000, "s", "playing", plays);
    print("qr_video_1280x720", all / 1000, "s", "playing", plays);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    cv::setNumThreads(1); // a picture is measured on one core, by all
    for (const cv::Size size : {cv::Size(640, 360), cv::Size(1280, 720), cv::Size(1920, 1080)})
        measurePictures(size);
    measureVideo();
    return 0;
}
