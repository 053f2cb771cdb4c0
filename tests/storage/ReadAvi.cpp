// Reads a video with OpenCV. First line: frames, width, height, frames a second. Then one line for each position that
// is given: "same" when a seek to it gives the picture that reading up to it gave.
#include <opencv2/videoio.hpp>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

bool areSame(const cv::Mat& one, const cv::Mat& other) {
    return !one.empty() && one.size() == other.size() && cv::norm(one, other, cv::NORM_INF) == 0.0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return 2;
    cv::VideoCapture video(argv[1], cv::CAP_FFMPEG);
    if (!video.isOpened())
        return 1;
    std::vector<cv::Mat> pictures;
    for (cv::Mat picture; video.read(picture);)
        pictures.push_back(picture.clone());
    std::printf("%zu %d %d %.3f\n", pictures.size(), static_cast<int>(video.get(cv::CAP_PROP_FRAME_WIDTH)),
                static_cast<int>(video.get(cv::CAP_PROP_FRAME_HEIGHT)), video.get(cv::CAP_PROP_FPS));
    for (int i = 2; i < argc; ++i) {
        const auto position = static_cast<std::size_t>(std::atoi(argv[i]));
        video.set(cv::CAP_PROP_POS_FRAMES, static_cast<double>(position));
        cv::Mat picture;
        const bool isSame = video.read(picture) && position < pictures.size() && areSame(picture, pictures[position]);
        std::puts(isSame ? "same" : "other");
    }
    return 0;
}
