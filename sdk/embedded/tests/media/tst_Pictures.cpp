#include "media/H264Decoder.h"
#include "media/JpegEncoder.h"
#include "media/PictureConverter.h"
#include "media/WholeFile.h"
#include "media/loop/LoopEncoder.h"
#include "media/loop/LoopPainter.h"
#include "media/loop/TextPainter.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

using namespace ipncsdk::media;

namespace {

/// A frame of a format, every plane filled with one value; 10-bit formats take the value times four.
Frame flatFrame(AVPixelFormat format, AVColorRange range, int width, int height, std::array<int, 3> values) {
    Frame frame(av_frame_alloc());
    frame->format = format;
    frame->color_range = range;
    frame->width = width;
    frame->height = height;
    av_frame_get_buffer(frame.get(), 0);
    const bool deep = format == AV_PIX_FMT_YUV420P10LE;
    for (int plane = 0; plane < 3; ++plane) {
        const bool halved = plane > 0 && (format == AV_PIX_FMT_YUV420P || format == AV_PIX_FMT_YUVJ420P || deep);
        const int bytes = frame->linesize[plane] * (halved ? (height + 1) / 2 : height);
        for (int index = 0; index < bytes; ++index) {
            const int value = values[static_cast<std::size_t>(plane)];
            frame->data[plane][index] = static_cast<std::uint8_t>(!deep            ? value
                                                                  : index % 2 == 0 ? value * 4 % 256
                                                                                   : value * 4 / 256);
        }
    }
    return frame;
}

} // namespace

class tst_Pictures : public QObject {
    Q_OBJECT

private slots:
    void stretchesLikeTheFormula();
    void converts_data();
    void converts();
    void refusesTinyFrames();
    void jpegIsReadByOthers();
    void decoderSurvivesDamage();
    void textWithoutFonts();
    void hostileTitles_data();
    void hostileTitles();
    void scenesMoveAndClose();
};

void tst_Pictures::stretchesLikeTheFormula() {
    // Many samples at once take other roads through the compiled loop than the few that are left over.
    for (const int count : {1, 7, 16, 31, 256}) {
        for (int first = 0; first + count <= 256; ++first) {
            std::vector<std::uint8_t> samples(static_cast<std::size_t>(count));
            std::iota(samples.begin(), samples.end(), static_cast<std::uint8_t>(first));
            std::vector<std::uint8_t> luma(samples.size() + 1, 77);
            std::vector<std::uint8_t> chroma(samples.size() + 1, 77);
            stretchLuma(samples.data(), luma.data(), count);
            stretchChroma(samples.data(), chroma.data(), count);
            for (std::size_t index = 0; index < samples.size(); ++index) {
                const double exactLuma = std::clamp((samples[index] - 16) * 255.0 / 219, 0.0, 255.0);
                const double exactChroma = std::clamp((samples[index] - 128) * 255.0 / 224 + 128, 0.0, 255.0);
                QVERIFY2(std::abs(luma[index] - exactLuma) <= 1, qPrintable(QString::number(samples[index])));
                QVERIFY2(std::abs(chroma[index] - exactChroma) <= 1, qPrintable(QString::number(samples[index])));
            }
            QCOMPARE(int(luma.back()), 77);
            QCOMPARE(int(chroma.back()), 77);
        }
    }
}

void tst_Pictures::converts_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("luma");
    QTest::addColumn<int>("expected");
    QTest::newRow("full range is copied") << int(AV_PIX_FMT_YUV420P) << int(AVCOL_RANGE_JPEG) << 235 << 235;
    QTest::newRow("full range by name") << int(AV_PIX_FMT_YUVJ420P) << int(AVCOL_RANGE_UNSPECIFIED) << 16 << 16;
    QTest::newRow("limited white") << int(AV_PIX_FMT_YUV420P) << int(AVCOL_RANGE_MPEG) << 235 << 255;
    QTest::newRow("no word means limited") << int(AV_PIX_FMT_YUV420P) << int(AVCOL_RANGE_UNSPECIFIED) << 16 << 0;
    QTest::newRow("4:2:2 limited") << int(AV_PIX_FMT_YUV422P) << int(AVCOL_RANGE_MPEG) << 235 << 255;
    QTest::newRow("4:4:4 full") << int(AV_PIX_FMT_YUV444P) << int(AVCOL_RANGE_JPEG) << 200 << 200;
    QTest::newRow("10 bit limited") << int(AV_PIX_FMT_YUV420P10LE) << int(AVCOL_RANGE_MPEG) << 235 << 255;
}

void tst_Pictures::converts() {
    QFETCH(int, format);
    QFETCH(int, range);
    QFETCH(int, luma);
    QFETCH(int, expected);
    // Odd sizes lose their last column and row.
    const Frame frame =
        flatFrame(static_cast<AVPixelFormat>(format), static_cast<AVColorRange>(range), 67, 35, {luma, 128, 128});
    Picture picture;
    PictureConverter converter;
    QVERIFY(converter.convert(*frame, picture));
    QCOMPARE(std::pair(picture.width, picture.height), std::pair(66, 34));
    QCOMPARE(picture.samples.size(), i420Size(66, 34));
    const auto close = [](int value, int wanted) {
        return std::abs(value - wanted) <= 1;
    };
    QVERIFY(std::all_of(picture.plane(0), picture.plane(1), [&](int value) { return close(value, expected); }));
    QVERIFY(std::all_of(picture.samples.begin() + 66 * 34, picture.samples.end(),
                        [&](int value) { return close(value, 128); }));
}

void tst_Pictures::refusesTinyFrames() {
    Picture picture;
    PictureConverter converter;
    QVERIFY(!converter.convert(*flatFrame(AV_PIX_FMT_YUV420P, AVCOL_RANGE_JPEG, 1, 40, {1, 1, 1}), picture));
}

void tst_Pictures::jpegIsReadByOthers() {
    const Picture picture = LoopPainter::paintBackdrop(3, 640, 360);
    for (const int widest : {0, 1000, 640, 321, 100, 1}) {
        const std::vector<std::uint8_t> jpeg = encodeJpeg(picture, widest);
        const QImage image = QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size()), "JPEG");
        QVERIFY(!image.isNull());
        const int width = widest == 0 || widest > 640 ? 640 : std::max(2, widest & ~1);
        QCOMPARE(image.width(), width);
        QVERIFY(widest == 1 || std::abs(image.height() - width * 9 / 16) <= 2);
    }
    QVERIFY(encodeJpeg(Picture()).empty());
}

void tst_Pictures::decoderSurvivesDamage() {
    const LoopKey key{{"", 0, 0}, Quality::Light};
    LoopPainter painter(key, std::make_shared<const Picture>(LoopPainter::paintBackdrop(0, 640, 360)));
    LoopEncoder encoder(640, 360);
    Gop gop;
    Picture picture;
    for (int frame = 0; frame < loopGopLength; ++frame) {
        painter.paint(frame, picture);
        QVERIFY(encoder.encode(picture, gop));
    }
    H264Decoder decoder;
    int pictures = 0;
    std::uint32_t seed = 1;
    std::size_t offset = 0;
    for (std::size_t index = 0; index < gop.sizes.size(); ++index) {
        std::vector<std::uint8_t> unit(gop.bytes.begin() + static_cast<std::ptrdiff_t>(offset),
                                       gop.bytes.begin() + static_cast<std::ptrdiff_t>(offset + gop.sizes[index]));
        offset += gop.sizes[index];
        for (std::size_t hit = 0; index > 0 && hit < unit.size() / 8; ++hit) {
            seed = seed * 1664525 + 1013904223;
            unit[4 + seed % (unit.size() - 4)] = static_cast<std::uint8_t>(seed >> 24);
        }
        decoder.feed({unit.data(), unit.size(), index == 0, {}});
        while (decoder.take(picture)) {
            ++pictures;
        }
    }
    QVERIFY(pictures > 0);
    QVERIFY(decoder.damaged() > 0);
}

void tst_Pictures::textWithoutFonts() {
    const TextPainter painter(false);
    const Mask digits = painter.line("12:34.56", 24, 400);
    QVERIFY(digits.width > 0);
    QVERIFY(std::any_of(digits.coverage.begin(), digits.coverage.end(), [](int value) { return value > 0; }));
    QCOMPARE(painter.line("北门", 24, 400).width, 0);
}

void tst_Pictures::hostileTitles_data() {
    QTest::addColumn<QByteArray>("title");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("Chinese") << QByteArray("北门 1 号摄像机");
    QTest::newRow("long") << QByteArray("长").repeated(5000);
    QTest::newRow("control characters") << QByteArray("a\0\n\x7f\x1b[31m", 10);
    QTest::newRow("cut off") << QByteArray("\xe5\x8c");
    QTest::newRow("overlong") << QByteArray("\xc0\xaf\xe0\x80\xaf\xf0\x80\x80\xaf");
    QTest::newRow("surrogate and beyond") << QByteArray("\xed\xa0\x80\xf4\x90\x80\x80\xff\xfe");
    QTest::newRow("path") << QByteArray("../../etc/passwd%s%n");
}

void tst_Pictures::hostileTitles() {
    QFETCH(QByteArray, title);
    const LoopKey key{{title.toStdString(), 2, 0}, Quality::Light};
    LoopPainter painter(key, std::make_shared<const Picture>(LoopPainter::paintBackdrop(2, 640, 360)));
    Picture picture;
    painter.paint(0, picture);
    QCOMPARE(picture.samples.size(), i420Size(640, 360));
    QVERIFY(QRegularExpression("^[0-9a-f]{32}\\.loop$").match(QString::fromStdString(key.fileName())).hasMatch());
    if (title.startsWith("北")) {
        // The title's corner differs from that of a camera without one.
        LoopPainter untitled({{"", 2, 0}, Quality::Light},
                             std::make_shared<const Picture>(LoopPainter::paintBackdrop(2, 640, 360)));
        Picture bare;
        untitled.paint(0, bare);
        QVERIFY(!std::equal(picture.plane(0), picture.plane(0) + 640 * 40, bare.plane(0)));
    }
}

void tst_Pictures::scenesMoveAndClose() {
    QVERIFY(sceneCount() >= 6);
    QCOMPARE(&sceneOf(-1), &sceneOf(sceneCount() - 1));
    for (int scene = 0; scene < sceneCount(); ++scene) {
        const auto difference = [&](float from, float to) {
            std::array<Picture, 2> pictures;
            for (std::size_t index = 0; index < 2; ++index) {
                pictures[index] = LoopPainter::paintBackdrop(scene, 320, 180);
                Canvas canvas(pictures[index]);
                sceneOf(scene).paintFrame(canvas, index == 0 ? from : to);
            }
            double sum = 0;
            for (std::size_t index = 0; index < 320 * 180; ++index) {
                sum += std::abs(pictures[0].samples[index] - pictures[1].samples[index]);
            }
            return sum;
        };
        // From the last frame to the first is a step like any other.
        const double step = std::max(difference(0.3F, 0.305F), difference(0.8F, 0.805F));
        QVERIFY2(difference(0.2F, 0.45F) > 0, qPrintable(QString::number(scene)));
        QVERIFY2(difference(0.995F, 0) < 4 * step + 20000, qPrintable(QString::number(scene)));
    }
}

QTEST_APPLESS_MAIN(tst_Pictures)
#include "tst_Pictures.moc"
