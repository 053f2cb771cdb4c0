#pragma once

#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

/// Pictures for the tests of live video, and a conversion to RGB that shares nothing with the renderer.
namespace pictures {

struct I420 {
    int width;
    int height;
    std::vector<std::uint8_t> bytes;

    I420(int pictureWidth, int pictureHeight)
        : width(pictureWidth)
        , height(pictureHeight)
        , bytes(static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight) * 3 / 2) {}

    std::uint8_t& luma(int x, int y) { return bytes[at(0, width, x, y)]; }
    std::uint8_t& blue(int x, int y) { return bytes[at(lumaBytes(), width / 2, x, y)]; }
    std::uint8_t& red(int x, int y) { return bytes[at(lumaBytes() * 5 / 4, width / 2, x, y)]; }

private:
    std::size_t lumaBytes() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    static std::size_t at(std::size_t plane, int stride, int x, int y) {
        return plane + static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(x);
    }
};

/// Eight upright colour bars over a luma that grows from the top, so that every turn and shift shows.
inline I420 colourBars(int width, int height) {
    constexpr int bars[8][2] = {{128, 128}, {44, 142},  {156, 44},  {72, 58},
                                {184, 198}, {100, 212}, {212, 114}, {90, 90}};
    I420 picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.luma(x, y) = static_cast<std::uint8_t>(60 + 130 * y / height);
        }
    }
    for (int y = 0; y < height / 2; ++y) {
        for (int x = 0; x < width / 2; ++x) {
            const auto& bar = bars[8 * x / (width / 2)];
            picture.blue(x, y) = static_cast<std::uint8_t>(bar[0]);
            picture.red(x, y) = static_cast<std::uint8_t>(bar[1]);
        }
    }
    return picture;
}

/// A plane's value at a place of the whole picture (0..1), interpolated between the samples' centres.
template <typename Sample>
double interpolated(int columns, int rows, double u, double v, Sample sample) {
    const double x = std::clamp(u * columns - 0.5, 0.0, columns - 1.0);
    const double y = std::clamp(v * rows - 0.5, 0.0, rows - 1.0);
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const int right = std::min(left + 1, columns - 1);
    const int bottom = std::min(top + 1, rows - 1);
    const double upper = std::lerp(double(sample(left, top)), double(sample(right, top)), x - left);
    const double lower = std::lerp(double(sample(left, bottom)), double(sample(right, bottom)), x - left);
    return std::lerp(upper, lower, y - top);
}

/// What a renderer of `size` pixels must show of the picture.
inline QImage converted(I420& picture, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    for (int row = 0; row < size.height(); ++row) {
        for (int column = 0; column < size.width(); ++column) {
            const double u = (column + 0.5) / size.width();
            const double v = (row + 0.5) / size.height();
            const double y = interpolated(picture.width, picture.height, u, v,
                                          [&](int px, int py) { return picture.luma(px, py); });
            const double cb = interpolated(picture.width / 2, picture.height / 2, u, v,
                                           [&](int px, int py) { return picture.blue(px, py); }) -
                              127.5;
            const double cr = interpolated(picture.width / 2, picture.height / 2, u, v,
                                           [&](int px, int py) { return picture.red(px, py); }) -
                              127.5;
            const auto level = [](double value) {
                return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
            };
            image.setPixel(
                column, row,
                qRgb(level(y + 1.13983 * cr), level(y - 0.39465 * cb - 0.58060 * cr), level(y + 2.03211 * cb)));
        }
    }
    return image;
}

/// The largest difference of a colour level between two images of one size, 256 when the sizes differ.
inline int largestDifference(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) {
        return 256;
    }
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return largest;
}

} // namespace pictures
