#include "vision/CodePicture.h"
#include "vision/MediaPictures.h"
#include "vision/QrFile.h"

#include <QBuffer>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <atomic>
#include <cmath>

using namespace corvanta::vision;

namespace {

constexpr QSize Size(640, 480);
constexpr double Focal = 800; // px
constexpr double Width = 105; // mm, of the code: 5 mm a module

const QrSetup setup{QStringLiteral("[800, 0, 320;\n 0, 800, 240;\n 0, 0, 1]"), QStringLiteral("[0, 0, 0, 0, 0]"),
                    QStringLiteral("105")};

QImage coded(QPointF centre = {320, 240}, int modulePx = 8) {
    return codePicture::make(Size, centre, modulePx);
}

} // namespace

/// Measuring files: pictures and videos that show a code, and such that do not.
class tst_QrPictures : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void positionsAreTrue_data();
    void positionsAreTrue();
    void picturesOfEveryKind_data();
    void picturesOfEveryKind();
    void videosAreMeasuredWhole_data();
    void videosAreMeasuredWhole();
    void theSameOnAllCores();
    void filesThatAreNone_data();
    void filesThatAreNone();
    void aFrameCountThatLies();
    void itCanBeEnded();

private:
    QString file(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    std::optional<Position> measure(const QString& path, int threads = 0) const {
        return measureFile(path, *pose_, {}, threads);
    }
    /// Each picture by itself.
    std::vector<Position> measureEach(const QVector<QImage>& pictures) const;

    QTemporaryDir folder_;
    std::optional<QrPose> pose_;
};

void tst_QrPictures::initTestCase() {
    pose_ = QrPose::make(setup);
    QVERIFY(pose_.has_value());
}

std::vector<Position> tst_QrPictures::measureEach(const QVector<QImage>& pictures) const {
    std::vector<Position> positions;
    const auto reader = visionBackend()->makeCodeReader();
    for (const QImage& picture : pictures) {
        if (const auto found = pose_->measure(reader->find(picture)))
            positions.push_back(found->position);
    }
    return positions;
}

void tst_QrPictures::positionsAreTrue_data() {
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<int>("modulePx");
    QTest::newRow("middle") << QPointF(320, 240) << 8;
    QTest::newRow("near") << QPointF(320, 240) << 14;
    QTest::newRow("far") << QPointF(320, 240) << 5;
    QTest::newRow("right") << QPointF(480, 240) << 8;
    QTest::newRow("left and below") << QPointF(150, 330) << 8;
}

void tst_QrPictures::positionsAreTrue() {
    QFETCH(const QPointF, centre);
    QFETCH(const int, modulePx);
    const QString path = file("true.png");
    QVERIFY(coded(centre, modulePx).save(path));
    const auto position = measure(path);
    QVERIFY(position.has_value());
    // The camera as seen from the code, along the camera's axes.
    const double distance = Focal * Width / (codePicture::Modules * modulePx);
    const double pixel = distance / Focal; // mm
    QVERIFY2(std::abs(position->z + distance) < distance * 2.0 / (codePicture::Modules * modulePx),
             qPrintable(position->texts().join(QLatin1Char(' '))));
    QVERIFY(std::abs(position->x + (centre.x() - 320) * pixel) < 2.5 * pixel + 0.01 * std::abs(position->x));
    QVERIFY(std::abs(position->y + (centre.y() - 240) * pixel) < 2.5 * pixel + 0.01 * std::abs(position->y));
}

void tst_QrPictures::picturesOfEveryKind_data() {
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char* name, const QImage& picture, bool isFound) {
        QTest::newRow(name) << picture << isFound;
    };
    const QImage good = coded();
    row("colour", good, true);
    row("grey", good.convertToFormat(QImage::Format_Grayscale8), true);
    row("grey of 16 bits", good.convertToFormat(QImage::Format_Grayscale16), true);
    row("colour of 16 bits", good.convertToFormat(QImage::Format_RGBA64), true);
    row("palette", good.convertToFormat(QImage::Format_Indexed8), true);
    row("black and white", good.convertToFormat(QImage::Format_Mono), true);
    QImage transparent = good.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < transparent.height(); ++y) {
        for (int x = 0; x < transparent.width(); ++x)
            transparent.setPixel(x, y, (transparent.pixel(x, y) & 0xffffffU) | (unsigned(x % 256) << 24));
    }
    row("transparent", transparent, true);
    row("turned", good.transformed(QTransform().rotate(30)), true);
    QImage dim(Size, QImage::Format_RGB32);
    for (int y = 0; y < Size.height(); ++y) { // one side in the dark
        for (int x = 0; x < Size.width(); ++x)
            dim.setPixel(x, y, qRgb(1, 1, 1) * unsigned(qGray(good.pixel(x, y)) * (40 + x / 3) / 256));
    }
    row("uneven light", dim, true);
    QImage empty(Size, QImage::Format_RGB32);
    empty.fill(Qt::gray);
    row("nothing", empty, false);
    QImage two = codePicture::make(Size, {160, 240}, 8);
    codePicture::add(two, {480, 240}, 8, QStringLiteral("CORVANTA-2"));
    row("two codes", two, false);
    QImage half = good;
    QPainter(&half).fillRect(0, 0, 320, 480, Qt::gray);
    row("half a code", half, false);
    row("bars", codePicture::makeBars(Size), false);
    for (const QSize size :
         {QSize(1, 1), QSize(20000, 20), QSize(20, 20000), QSize(640, 3), QSize(3, 3), QSize(16, 15)})
        row(qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())), good.scaled(size), false);
}

void tst_QrPictures::picturesOfEveryKind() {
    QFETCH(const QImage, picture);
    const QString path = file("kind.png");
    QVERIFY(picture.save(path));
    QTEST(measure(path).has_value(), "isFound");
}

void tst_QrPictures::videosAreMeasuredWhole_data() {
    QTest::addColumn<QVector<QImage>>("pictures");
    QTest::addColumn<bool>("isFound");
    const QImage far = coded({320, 240}, 5);
    const QImage middle = coded({330, 240}, 8);
    const QImage near = coded({300, 250}, 12);
    QImage empty(Size, QImage::Format_RGB32);
    empty.fill(Qt::gray);
    using Pictures = QVector<QImage>;
    QTest::newRow("one") << Pictures{middle} << true;
    QTest::newRow("two") << Pictures{middle, near} << true;
    QTest::newRow("three") << Pictures{near, far, middle} << true;
    QTest::newRow("some without") << Pictures{empty, near, empty, far, middle, empty} << true;
    QTest::newRow("none") << Pictures{empty, empty, empty} << false;
}

void tst_QrPictures::videosAreMeasuredWhole() {
    QFETCH(const QVector<QImage>, pictures);
    QFETCH(const bool, isFound);
    const QString path = file("whole.avi");
    // Without loss, so that each frame is what was drawn.
    QVERIFY(codePicture::makeVideo(path, pictures,
                                   {QStringLiteral("-c:v"), QStringLiteral("mjpeg"), QStringLiteral("-q:v"),
                                    QStringLiteral("1"), QStringLiteral("-pix_fmt"), QStringLiteral("yuvj420p")}));
    const auto position = measure(path);
    const auto expected = trimmedMean(measureEach(pictures));
    QCOMPARE(position.has_value(), isFound);
    QCOMPARE(expected.has_value(), isFound);
    if (!isFound)
        return;
    const auto isNear = [](float a, float b) {
        return std::abs(a - b) < 0.02F * (std::abs(b) + 20); // coding may move a corner by a pixel
    };
    QVERIFY2(isNear(position->x, expected->x) && isNear(position->y, expected->y) && isNear(position->z, expected->z),
             qPrintable(position->texts().join(' ') + " / " + expected->texts().join(' ')));
}

void tst_QrPictures::theSameOnAllCores() {
    QVector<QImage> pictures;
    for (int i = 0; i < 60; ++i)
        pictures += coded({300.0 + i, 240.0 - i / 2.0}, 7 + i % 3);
    const QString path = file("cores.avi");
    QVERIFY(codePicture::makeVideo(path, pictures));
    const auto alone = measure(path, 1);
    QVERIFY(alone.has_value());
    for (const int threads : {2, 3, 7})
        QCOMPARE(measure(path, threads)->texts(), alone->texts());
    std::atomic<int> frames = 0;
    FrameLoop loop;
    loop.taskOfThread = [&frames]() -> FrameTask {
        return [&frames](std::size_t, const corvanta::playback::Picture&) {
            ++frames;
        };
    };
    loop.threads = 4;
    QVERIFY(forEachFrame(path, loop));
    QCOMPARE(frames.load(), pictures.size());
}

void tst_QrPictures::filesThatAreNone_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    const auto row = [](const char* what, const char* name, const QByteArray& content) {
        QTest::newRow(what) << QString::fromLatin1(name) << content;
    };
    QByteArray png;
    QBuffer buffer(&png);
    coded().save(&buffer, "PNG");
    row("a picture that is words", "a.png", "not a picture");
    row("a picture of nothing", "b.jpg", {});
    row("a picture cut off in its header", "c.png", png.left(20));
    row("a video that is words", "d.avi", "not a video");
    row("a video of nothing", "e.avi", {});
    row("a video cut off in its header", "f.avi", QByteArray("RIFF\x10\x10\0\0AVI LIST", 16));
    row("of another kind", "g.mp4", png);
    row("without a name", ".", {});
}

void tst_QrPictures::filesThatAreNone() {
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    const QString path = folder_.filePath(name);
    QFile out(path);
    if (out.open(QIODevice::WriteOnly)) {
        out.write(content);
        out.close();
    }
    QVERIFY(!measure(path));
    QVERIFY(!measure(folder_.filePath(QStringLiteral("missing-") + name)));
}

void tst_QrPictures::aFrameCountThatLies() {
    QVector<QImage> pictures;
    for (int i = 0; i < 12; ++i)
        pictures += coded();
    const QString path = file("count.avi");
    QVERIFY(codePicture::makeVideo(path, pictures));
    const auto honest = measure(path);
    QVERIFY(honest.has_value());
    QFile video(path);
    QVERIFY(video.open(QIODevice::ReadWrite));
    const QByteArray bytes = video.readAll();
    for (const quint32 count : {0U, 1U, 100000U, 0xffffffffU}) {
        QByteArray changed = bytes;
        // The main header counts frames at 16 behind its size, the stream's at 32.
        qToLittleEndian(count, changed.data() + changed.indexOf("avih") + 8 + 16);
        qToLittleEndian(count, changed.data() + changed.indexOf("strh") + 8 + 32);
        QVERIFY(video.seek(0) && video.write(changed) == changed.size() && video.flush());
        const auto position = measure(path);
        QVERIFY(position.has_value());
        QCOMPARE(position->texts(), honest->texts());
    }
    video.resize(bytes.size() * 9 / 10); // the index is gone, and some frames
    QVERIFY(measure(path).has_value());
}

void tst_QrPictures::itCanBeEnded() {
    const QString path = file("ended.avi");
    QVERIFY(codePicture::makeVideo(path, QVector<QImage>(30, coded())));
    std::atomic<int> asked = 0;
    QVERIFY(!measureFile(path, *pose_, [&asked] { return ++asked > 3; }));
    QVERIFY(asked < 10);
}

QTEST_GUILESS_MAIN(tst_QrPictures)
#include "tst_QrPictures.moc"
