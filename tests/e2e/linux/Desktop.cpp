#include "e2e/Desktop.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

QString text(int number) {
    return QString::number(number);
}

/// What the tool says, without the line's end; empty when it fails, as it does for a window that has just gone.
QString xdotool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(Desktop::Patience))
        return {};
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

QStringList movement(const QPoint& place) {
    return {QStringLiteral("mousemove"), text(place.x()), text(place.y())};
}

QStringList search(const QString& title, qint64 process) {
    QStringList result{QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("--onlyvisible")};
    if (process != 0)
        result << QStringLiteral("--pid") << QString::number(process);
    return result << QStringLiteral("--name") << title;
}

std::optional<QRect> placeOf(const QString& window) {
    const QString said = xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
    const auto number = [&said](const char* name) {
        const QRegularExpression line(QStringLiteral("^%1=(-?\\d+)$").arg(QLatin1String(name)),
                                      QRegularExpression::MultilineOption);
        return line.match(said).captured(1).toInt();
    };
    const QRect place(number("X"), number("Y"), number("WIDTH"), number("HEIGHT"));
    return place.isEmpty() ? std::nullopt : std::optional(place);
}

} // namespace

Desktop::~Desktop() {
    windowManager_.kill();
    windowManager_.waitForFinished();
}

bool Desktop::start() {
    windowManager_.setProcessChannelMode(QProcess::MergedChannels);
    windowManager_.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    // Only a window manager tells how many desktops there are.
    return QTest::qWaitFor([] { return xdotool({QStringLiteral("get_num_desktops")}).toInt() > 0; }, Patience);
}

QList<Desktop::Window> Desktop::windows(const QString& title, qint64 process) {
    QList<Window> result;
    for (const QString& id : xdotool(search(title, process)).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const qint64 owner = xdotool({QStringLiteral("getwindowpid"), id}).toLongLong();
        if (const auto place = placeOf(id))
            result.append({id, owner, *place});
    }
    return result;
}

std::optional<Desktop::Window> Desktop::window(const QString& title, qint64 process) {
    const QList<Window> found = windows(title, process);
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

int Desktop::countWindows(qint64 process) {
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                    QString::number(process)})
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
        .size();
}

bool Desktop::isActive(const QString& title, qint64 process) {
    const QString active = xdotool({QStringLiteral("getactivewindow")});
    return !active.isEmpty() && xdotool(search(title, process)).split(QLatin1Char('\n')).contains(active);
}

void Desktop::activate(const QString& title, qint64 process) {
    if (const auto wanted = window(title, process))
        xdotool({QStringLiteral("windowactivate"), wanted->id});
}

std::optional<QRect> Desktop::activePlace() {
    const QString active = xdotool({QStringLiteral("getactivewindow")});
    return active.isEmpty() ? std::nullopt : placeOf(active);
}

void Desktop::moveMouse(const QPoint& place) {
    xdotool(movement(place));
}

void Desktop::press() {
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
}

void Desktop::release() {
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Desktop::click(const QPoint& place) {
    xdotool(movement(place) << QStringLiteral("click") << QStringLiteral("1"));
}

void Desktop::clickRight(const QPoint& place) {
    xdotool(movement(place) << QStringLiteral("click") << QStringLiteral("3"));
}

void Desktop::turnWheel(const QPoint& place, bool down) {
    xdotool(movement(place) << QStringLiteral("click") << (down ? QStringLiteral("5") : QStringLiteral("4")));
}

void Desktop::doubleClick(const QPoint& place) {
    xdotool(movement(place) << QStringLiteral("click") << QStringLiteral("--repeat") << QStringLiteral("2")
                            << QStringLiteral("--delay") << QStringLiteral("20") << QStringLiteral("1"));
}

void Desktop::keys(const QStringList& names) {
    xdotool(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("15")} + names);
}

void Desktop::type(const QString& text) {
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("15"), text});
}

void Desktop::pressKey(const QString& name) {
    xdotool({QStringLiteral("keydown"), name});
}

void Desktop::releaseKey(const QString& name) {
    xdotool({QStringLiteral("keyup"), name});
}
