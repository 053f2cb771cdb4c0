#include "monitor/SavedWorkspace.h"

#include "base/Settings.h"
#include "monitor/Layouts.h"

#include <QDebug>

#include <algorithm>

namespace corvanta::workspace {

namespace {

const QString IndexKey = QStringLiteral("index");
const QString DeviceKey = QStringLiteral("ipncid");
const QString StateKey = QStringLiteral("state");
const QString Maximized = QStringLiteral("maximized");
const QString FullScreen = QStringLiteral("fullscreen");

constexpr QSize UsualSize(1280, 720);
constexpr int LargestSide = 32767; // px; no window system takes more

std::optional<int> integerOf(const QVariant& value) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const bool fits = isNumber && number >= -1e9 && number <= 1e9; // "nan" is a number of which neither holds
    return fits && number == static_cast<int>(number) ? std::optional(static_cast<int>(number)) : std::nullopt;
}

} // namespace

QMap<int, QString> readOpenVideos(const QVariant& stored) {
    QMap<int, QString> result;
    for (const QVariant& entry : stored.toList()) {
        const QVariantMap map = entry.toMap();
        const auto index = integerOf(map.value(IndexKey));
        const QString device = map.value(DeviceKey).toString();
        if (!index || *index < 0 || device.isEmpty())
            qDebug() << "saved open video left out" << entry;
        else
            result.insert(*index, device);
    }
    return result;
}

QVariant storedOpenVideos(const QMap<int, QString>& videos) {
    QVariantList list;
    for (auto video = videos.begin(); video != videos.end(); ++video)
        list += QVariantMap{{IndexKey, video.key()}, {DeviceKey, video.value()}};
    return list;
}

std::optional<GridShape> readLayout(const Settings& settings) {
    const QVariant storedRows = settings.get(keys::GridRows);
    const QVariant storedColumns = settings.get(keys::GridColumns);
    if (!storedRows.isValid() && !storedColumns.isValid())
        return std::nullopt;
    const auto rows = integerOf(storedRows);
    const auto columns = integerOf(storedColumns);
    const auto& known = layouts();
    const bool exists = std::any_of(known.begin(), known.end(), [&](const Layout& layout) {
        return rows == layout.rows && columns == layout.columns;
    });
    if (!exists) {
        qDebug() << "saved layout left out" << storedRows << storedColumns;
        return std::nullopt;
    }
    return GridShape{*rows, *columns};
}

int readZoom(const Settings& settings, int poolSize) {
    const QVariant stored = settings.get(keys::VideoZoom);
    const auto index = integerOf(stored);
    if (!stored.isValid() || index == -1)
        return -1;
    if (!index || *index < 0 || *index >= poolSize) {
        qDebug() << "saved zoom left out" << stored;
        return -1;
    }
    return *index;
}

std::optional<WindowPlace> readWindowPlace(const QVariant& stored) {
    if (!stored.isValid())
        return std::nullopt;
    const QVariantMap map = stored.toMap();
    const auto x = integerOf(map.value(QStringLiteral("x")));
    const auto y = integerOf(map.value(QStringLiteral("y")));
    const auto width = integerOf(map.value(QStringLiteral("width")));
    const auto height = integerOf(map.value(QStringLiteral("height")));
    const auto isSide = [](const std::optional<int>& side) {
        return side && *side > 0 && *side <= LargestSide;
    };
    if (!x || !y || !isSide(width) || !isSide(height)) {
        qDebug() << "saved place of the window left out" << stored;
        return std::nullopt;
    }
    const QString state = map.value(StateKey).toString();
    return WindowPlace{QRect(*x, *y, *width, *height), state == Maximized, state == FullScreen};
}

QVariant storedWindowPlace(const WindowPlace& place) {
    return QVariantMap{
        {QStringLiteral("x"), place.normal.x()},
        {QStringLiteral("y"), place.normal.y()},
        {QStringLiteral("width"), place.normal.width()},
        {QStringLiteral("height"), place.normal.height()},
        {StateKey, place.fullScreen ? FullScreen : (place.maximized ? Maximized : QString())},
    };
}

QRect placeOnScreens(const QRect& wanted, const QSize& smallest, const QVector<QRect>& screens) {
    if (screens.isEmpty())
        return wanted;
    const auto shared = [&wanted](const QRect& screen) {
        const QRect both = screen.intersected(wanted);
        return both.isEmpty() ? 0 : static_cast<qint64>(both.width()) * both.height();
    };
    const QRect screen = *std::max_element(screens.begin(), screens.end(), [&](const QRect& one, const QRect& other) {
        return shared(one) < shared(other);
    });
    QRect place(wanted.topLeft(), wanted.size().boundedTo(screen.size()).expandedTo(smallest));
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    // Last, so that the title is reached even where the smallest window is larger than the screen.
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    return place;
}

QRect firstPlace(const QSize& smallest, const QRect& screen) {
    QRect place(QPoint(), UsualSize.boundedTo(screen.size() * 9 / 10).expandedTo(smallest));
    place.moveCenter(screen.center());
    return placeOnScreens(place, smallest, {screen});
}

} // namespace corvanta::workspace
