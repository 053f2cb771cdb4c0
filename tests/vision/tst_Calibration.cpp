#include "vision/CameraCalibration.h"
#include "vision/MatrixText.h"
#include "vision/MediaPictures.h"

#include <QDir>
#include <QPainter>
#include <QTest>

#include <opencv2/core.hpp>

#include <cmath>

using namespace corvanta::vision;

namespace {

const QString folder = QStringLiteral("/usr/share/doc/opencv-doc/examples/data/");
const BoardShape shape{9, 6, 25, 25};

/// What was published with the photographs.
struct Published {
    cv::Mat camera;
    cv::Mat distortion;
};

Published published() {
    const cv::FileStorage file((folder + QStringLiteral("left_intrinsics.yml")).toStdString(), cv::FileStorage::READ);
    Published result;
    file["camera_matrix"] >> result.camera;
    file["distortion_coefficients"] >> result.distortion;
    return result;
}

/// Where a point of the picture comes from: the tangents of its angle to the optical axis. This is what matters of a
/// camera; focal lengths and distortions can stand in for each other.
double seenRadius(const cv::Mat& camera, const cv::Mat& distortion, double tangent) {
    const double r2 = tangent * tangent;
    const double factor = 1 + distortion.at<double>(0) * r2 + distortion.at<double>(1) * r2 * r2 +
                          distortion.at<double>(4) * r2 * r2 * r2;
    return camera.at<double>(0, 0) * tangent * factor;
}

/// A board as it is seen from the front, its first corner at (60, 60).
QImage frontal(int side, const QVector<QRgb>& colours = {qRgb(0, 0, 0), qRgb(255, 255, 255)}) {
    QImage picture(side * 12, side * 9, QImage::Format_RGB32);
    picture.fill(colours[1]);
    QPainter painter(&picture);
    for (int row = 0; row < shape.columnCorners + 1; ++row) {
        for (int column = row % 2; column < shape.rowCorners + 1; column += 2)
            painter.fillRect(side + column * side, side + row * side, side, side, QColor(colours[0]));
    }
    return picture;
}

} // namespace

/// Finding chessboards and calibrating, on photographs that others have taken and published.
class tst_Calibration : public QObject {
    Q_OBJECT

private slots:
    void photographsGiveThePublishedCamera();
    void cornersAreExact();
    void boardsThatAreNone_data();
    void boardsThatAreNone();
    void foundCornersAreDrawn();
    void tooLittleIsNoCamera();
};

void tst_Calibration::photographsGiveThePublishedCamera() {
#ifdef Q_OS_WIN
    QSKIP("the photographs are a package of Debian");
#endif
    const QStringList photos = QDir(folder).entryList({QStringLiteral("left0*.jpg")});
    QVERIFY2(photos.size() >= 8, "the package opencv-doc has them");
    QVector<BoardCorners> found;
    QSize size;
    for (const QString& name : photos) {
        const QImage photo = readPicture(folder + name);
        size = photo.size();
        const auto corners = findBoard(photo, shape);
        if (corners)
            found += *corners;
        else
            qDebug() << "no board in" << name;
    }
    QVERIFY(found.size() >= photos.size() - 1);
    const auto result = calibrate(found, shape, size);
    QVERIFY(result.has_value());
    QVERIFY2(result->reprojectionError > 0.01 && result->reprojectionError < 0.5,
             qPrintable(QString::number(result->reprojectionError)));
    const Published expected = published();
    const cv::Mat camera = cv::Mat(matrixFromText(result->cameraMatrix).values, true).reshape(1, 3);
    const cv::Mat distortion(matrixFromText(result->distCoeffs).values, true);
    QCOMPARE(camera.size(), cv::Size(3, 3));
    QCOMPARE(distortion.total(), std::size_t{5});
    const double focal = expected.camera.at<double>(0, 0);
    QVERIFY2(std::abs(camera.at<double>(0, 0) - focal) < focal * 0.02, qPrintable(result->cameraMatrix));
    QVERIFY2(std::abs(camera.at<double>(1, 1) - focal) < focal * 0.02, qPrintable(result->cameraMatrix));
    QVERIFY(std::abs(camera.at<double>(0, 2) - expected.camera.at<double>(0, 2)) < 10);
    QVERIFY(std::abs(camera.at<double>(1, 2) - expected.camera.at<double>(1, 2)) < 10);
    // Up to the corners of the picture both cameras see the same, to a few pixels.
    for (const double tangent : {0.1, 0.2, 0.3, 0.4, 0.5})
        QVERIFY(std::abs(seenRadius(camera, distortion, tangent) -
                         seenRadius(expected.camera, expected.distortion, tangent)) < 4);
}

void tst_Calibration::cornersAreExact() {
    const int side = 60;
    const auto corners = findBoard(frontal(side), shape);
    QVERIFY(corners.has_value());
    QCOMPARE(corners->size(), shape.rowCorners * shape.columnCorners);
    // Row by row, from either end. A corner lies between two pixels.
    const bool isTurned = corners->first().x() > corners->last().x();
    for (int i = 0; i < corners->size(); ++i) {
        const int number = isTurned ? corners->size() - 1 - i : i;
        const QPointF place((2 + number % shape.rowCorners) * side - 0.5,
                            (2 + number / shape.rowCorners) * side - 0.5);
        const QPointF off = corners->at(i) - place;
        QVERIFY2(std::hypot(off.x(), off.y()) < 0.75, qPrintable(QString::number(i))); // half a pixel either way
    }
}

void tst_Calibration::boardsThatAreNone_data() {
    QTest::addColumn<QImage>("photo");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    const auto row = [](const char* name, const QImage& photo, int rowCorners = 9, int columnCorners = 6) {
        QTest::newRow(name) << photo << rowCorners << columnCorners;
    };
    QImage grey(640, 480, QImage::Format_RGB32);
    grey.fill(Qt::gray);
    QImage one(1, 1, QImage::Format_RGB32);
    one.fill(Qt::black);
    row("no photo", {});
    row("one pixel", one);
    row("a narrow one", grey.scaled(20000, 20));
    row("nothing on it", grey);
    row("half of the board", frontal(40).copy(0, 0, 240, 360));
    row("a board of another shape", frontal(40), 7, 5);
    row("a shape of no corners", frontal(40), 0, 0);
    row("a shape below zero", frontal(40), -9, -6);
    row("a shape of two", frontal(40), 2, 2);
}

void tst_Calibration::boardsThatAreNone() {
    QFETCH(const QImage, photo);
    QFETCH(const int, row);
    QFETCH(const int, column);
    QVERIFY(!findBoard(photo, {row, column, 25, 25}));
}

void tst_Calibration::foundCornersAreDrawn() {
    const QImage photo = frontal(40);
    const auto corners = findBoard(photo, shape);
    QVERIFY(corners.has_value());
    const QImage drawn = drawBoard(photo, shape, *corners);
    QCOMPARE(drawn.size(), photo.size());
    int coloured = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x)
            coloured += QColor(drawn.pixel(x, y)).saturation() > 0 ? 1 : 0;
    }
    QVERIFY(coloured > 100);
    QVERIFY(photo == frontal(40)); // the photo itself stays
}

void tst_Calibration::tooLittleIsNoCamera() {
    const auto corners = findBoard(frontal(40), shape);
    QVERIFY(corners.has_value());
    QVERIFY(!calibrate({}, shape, {480, 360}));
    QVERIFY(!calibrate({*corners}, shape, {}));
    QVERIFY(!calibrate({*corners, corners->mid(1)}, shape, {480, 360})); // of another board
    QVERIFY(!calibrate({*corners}, {9, 6, 0, 0}, {480, 360}));           // squares without a size
}

QTEST_GUILESS_MAIN(tst_Calibration)
#include "tst_Calibration.moc"
