#include "e2e/Program.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>
#include <QtTest>

namespace {

const QString Suppressions = QStringLiteral(CORVANTA_SUPPRESSIONS);

QProcessEnvironment environment(const QString& home) {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
    result.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // Drivers and fonts leave memory behind at the end; the tests of the parts look for leaks.
    result.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    result.insert(QStringLiteral("TSAN_OPTIONS"), QStringLiteral("suppressions=%1/tsan.supp").arg(Suppressions));
    return result;
}

} // namespace

Program::Program(const QString& home, const QString& data)
    : home_(home)
    , data_(data) {}

Program::~Program() {
    kill();
}

bool Program::start() {
    log_.clear();
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setProcessEnvironment(environment(home_));
    process_.start(QStringLiteral(CORVANTA_PROGRAM), {QStringLiteral("--data"), data_});
    return process_.waitForStarted();
}

void Program::kill() {
    process_.kill();
    process_.waitForFinished();
}

int Program::waitForEnd() {
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(60000))
        return -1;
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QString Program::log() {
    log_ += QString::fromUtf8(process_.readAll());
    return log_;
}

QByteArray Program::xdotool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    tool.waitForFinished(20000);
    return tool.readAllStandardOutput();
}

QRect Program::frame() const {
    QRect largest;
    const QByteArrayList windows = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                            QStringLiteral("--name"), QStringLiteral("^Corvanta--")})
                                       .split('\n');
    for (const QByteArray& window : windows) {
        if (window.isEmpty())
            continue;
        const QString text = QString::fromLatin1(
            xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), QString::fromLatin1(window)}));
        const auto number = [&text](const char* name) {
            const QRegularExpression line(QStringLiteral("%1=(-?\\d+)").arg(QLatin1String(name)));
            return line.match(text).captured(1).toInt();
        };
        const QRect place(number("X"), number("Y"), number("WIDTH"), number("HEIGHT"));
        if (place.width() * place.height() > largest.width() * largest.height())
            largest = place;
    }
    return largest;
}

bool Program::hasWindow(const QString& title) {
    return !xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), title})
                .trimmed()
                .isEmpty();
}

QPoint Program::accountButton() const {
    return {frame().right() - 145, frame().top() + 24};
}
QPoint Program::closeButton() const {
    return {frame().right() - 24, frame().top() + 24};
}
QPoint Program::layoutButton(int number) const {
    return {frame().right() - 234 + number * 35, frame().bottom() - 24};
}
QPoint Program::treeRow(int row) const {
    return {frame().left() + 100, frame().top() + 105 + row * 28};
}

QRect Program::grid() const {
    return frame().adjusted(228, 45, -4, -43);
}

QRect Program::tile(int side, int index) const {
    const QRect area = grid();
    const QSize size(area.width() / side, area.height() / side);
    return {area.topLeft() + QPoint((index % side) * size.width(), (index / side) * size.height()), size};
}

void Program::click(const QPoint& place, int button, int times) {
    xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
             QStringLiteral("click"), QStringLiteral("--repeat"), QString::number(times), QStringLiteral("--delay"),
             QStringLiteral("40"), QString::number(button)});
}

void Program::drag(const QPoint& from, const QPoint& to) {
    xdotool({QStringLiteral("mousemove"), QString::number(from.x()), QString::number(from.y()),
             QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove"),
             QString::number((from.x() + to.x()) / 2), QString::number((from.y() + to.y()) / 2),
             QStringLiteral("mousemove"), QString::number(to.x()), QString::number(to.y()), QStringLiteral("mouseup"),
             QStringLiteral("1")});
}

void Program::key(const QString& name) {
    xdotool({QStringLiteral("key"), name});
}

void Program::type(const QString& text) {
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("15"), text});
}

QImage Program::look(const QRect& area) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

bool Program::isLive(const QRect& area, int milliseconds) {
    // The middle only: the clock in a corner alone could not be told from a blinking cursor.
    const QRect middle =
        area.adjusted(area.width() / 10, area.height() / 10, -area.width() / 10, -area.height() / 10);
    const auto differs = [](const QImage& a, const QImage& b) {
        int changed = 0;
        for (int y = 0; y < a.height(); y += 2) {
            for (int x = 0; x < a.width(); x += 2)
                changed += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
        return changed > a.width() * a.height() / 400;
    };
    return QTest::qWaitFor(
        [&] {
            if (isEmptyTile(area))
                return false;
            const QImage before = look(middle);
            return QTest::qWaitFor([&] { return differs(before, look(middle)); }, 1500);
        },
        milliseconds);
}

bool Program::isEmptyTile(const QRect& area) {
    const QImage image = look(area);
    int grey = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            grey += image.pixel(x, y) == qRgb(174, 174, 174) ? 1 : 0;
    }
    return grey > image.width() * image.height() / 2;
}
