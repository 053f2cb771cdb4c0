#include "vision/LaserInfo.h"

#include "base/DataTree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvanta::vision {

namespace {

constexpr int PointCount = 4;

const std::array<std::pair<SpotColour, QString>, 4>& colourTexts() {
    static const std::array<std::pair<SpotColour, QString>, 4> texts = {{{SpotColour::Any, QStringLiteral("any")},
                                                                         {SpotColour::Red, QStringLiteral("red")},
                                                                         {SpotColour::Green, QStringLiteral("green")},
                                                                         {SpotColour::Blue, QStringLiteral("blue")}}};
    return texts;
}

QString colourText(SpotColour colour) {
    return std::find_if(colourTexts().begin(), colourTexts().end(),
                        [colour](const auto& one) { return one.first == colour; })
        ->second;
}

SpotColour colourFrom(const QString& text) {
    const auto found = std::find_if(colourTexts().begin(), colourTexts().end(),
                                    [&text](const auto& one) { return one.second == text; });
    return found == colourTexts().end() ? SpotColour::Any : found->first;
}

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LaserInfo)
};

/// The number of a text or number; NaN for what is none, with one debug line unless it is missing.
double numberFrom(const QVariant& value) {
    bool isNumber = false;
    const double number = value.type() == QVariant::Bool ? 0 : value.toString().trimmed().toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return number;
    if (value.isValid() && !value.toString().isEmpty())
        qDebug() << "no number in the setup of a laser spot" << value.toString().left(40);
    return LaserInfo::NotSet;
}

/// The shortest text that gives back the same number; empty for none.
QString textOf(double number) {
    return std::isfinite(number) ? QString::number(number, 'g', QLocale::FloatingPointShortest) : QString();
}

double take(QVariantMap& map, const char* key) {
    return numberFrom(map.take(QLatin1String(key)));
}

/// Takes a number that has a usual value: that of `number`, which stays where the key is missing.
void takeInto(QVariantMap& map, const char* key, double& number) {
    if (map.contains(QLatin1String(key)))
        number = take(map, key);
}

QVector<ScalePoint> takePoints(QVariantMap& map) {
    const QVariantList entries = map.take(QStringLiteral("points")).toList();
    if (entries.size() != PointCount) {
        if (!entries.isEmpty())
            qDebug() << "points for the scale of a laser spot were left out:" << entries.size();
        return {};
    }
    QVector<ScalePoint> points;
    for (const QVariant& entry : entries) {
        QVariantMap point = entry.toMap();
        const QPointF pixel(take(point, "px"), take(point, "py"));
        points += ScalePoint{pixel, QPointF(take(point, "x"), take(point, "y"))};
    }
    return points;
}

QVariantList pointsList(const QVector<ScalePoint>& points) {
    QVariantList entries;
    for (const ScalePoint& point : points)
        entries += QVariantMap{{QStringLiteral("px"), textOf(point.pixel.x())},
                               {QStringLiteral("py"), textOf(point.pixel.y())},
                               {QStringLiteral("x"), textOf(point.place.x())},
                               {QStringLiteral("y"), textOf(point.place.y())}};
    return entries;
}

std::optional<QPointF> takeInitial(QVariantMap& map) {
    QVariantMap values = map.take(QStringLiteral("inintDataList")).toMap();
    const QPointF initial(take(values, "laser_inint_x"), take(values, "laser_inint_y"));
    return std::isfinite(initial.x()) && std::isfinite(initial.y()) ? std::optional(initial) : std::nullopt;
}

QVariantMap initialMap(const QPointF& initial) {
    return {{QStringLiteral("laser_inint_x"), textOf(initial.x())},
            {QStringLiteral("laser_inint_y"), textOf(initial.y())}};
}

LaserScale::Points arrayOf(const QVector<ScalePoint>& points) {
    LaserScale::Points result;
    std::copy(points.begin(), points.end(), result.begin());
    return result;
}

bool isWithin(double value, double low, double high) {
    return value >= low && value <= high; // false for NaN
}

std::optional<QString> spotProblem(const SpotSettings& spot) {
    constexpr double mostThreshold = 255;
    if (!isWithin(spot.threshold, 1, mostThreshold))
        return Texts::tr("光斑亮度应为1~255");
    if (!isWithin(spot.smallestDiameter, 1, SpotSettings::GreatestDiameter) ||
        !isWithin(spot.largestDiameter, 1, SpotSettings::GreatestDiameter))
        return Texts::tr("光斑直径应为1~%1像素").arg(SpotSettings::GreatestDiameter);
    if (spot.smallestDiameter >= spot.largestDiameter)
        return Texts::tr("光斑最小直径应小于最大直径");
    if (!isWithin(spot.roundness, 0, 1))
        return Texts::tr("光斑圆度应为0~1");
    return std::nullopt;
}

} // namespace

QString LaserInput::typeText() const {
    return axis == Axis::X ? QStringLiteral("laser_x") : QStringLiteral("laser_y");
}

std::optional<LaserInput> LaserInput::fromMap(const QVariantMap& map) {
    LaserInput input;
    input.rest = map;
    const QString type = input.rest.take(QStringLiteral("type")).toString();
    input.axis = type == QLatin1String("laser_y") ? Axis::Y : Axis::X;
    if (type != input.typeText())
        return std::nullopt;
    input.pid = input.rest.take(QStringLiteral("pid"));
    input.ifpid = input.rest.take(QStringLiteral("ifpid"));
    input.ifname = input.rest.take(QStringLiteral("ifname")).toString();
    const QVariant isUploaded = input.rest.take(QStringLiteral("isupload"));
    input.isUpload = !isUploaded.isValid() || isUploaded.toBool();
    return input;
}

QVariantMap LaserInput::toMap() const {
    QVariantMap map = rest;
    map.insert(QStringLiteral("pid"), pid);
    map.insert(QStringLiteral("ifpid"), ifpid);
    map.insert(QStringLiteral("ifname"), ifname);
    map.insert(QStringLiteral("type"), typeText());
    map.insert(QStringLiteral("isupload"), isUpload);
    return map;
}

LaserInfo LaserInfo::fromMap(const QVariantMap& map) {
    LaserInfo info;
    info.rest = map;
    QVariantMap& rest = info.rest;
    info.mode = rest.take(QStringLiteral("mode")).toString() == QLatin1String("points") ? Mode::Points : Mode::Scale;
    info.scale = take(rest, "scale");
    info.points = takePoints(rest);
    info.spot.colour = colourFrom(rest.take(QStringLiteral("colour")).toString());
    takeInto(rest, "threshold", info.spot.threshold);
    takeInto(rest, "mindiameter", info.spot.smallestDiameter);
    takeInto(rest, "maxdiameter", info.spot.largestDiameter);
    takeInto(rest, "roundness", info.spot.roundness);
    info.reference = rest.take(QStringLiteral("reference")).toString();
    info.initial = takeInitial(rest);
    const QVariantList inputs = rest.take(QStringLiteral("input")).toList();
    for (const QVariant& entry : inputs) {
        if (const auto input = LaserInput::fromMap(entry.toMap()))
            info.inputs += *input;
        else
            qDebug() << "an input of another type was left out" << entry;
    }
    return info;
}

QVariantMap LaserInfo::toMap() const {
    QVariantMap map = rest;
    const auto put = [&map](const char* key, const QVariant& value) {
        map.insert(QLatin1String(key), value);
    };
    put("mode", mode == Mode::Points ? QStringLiteral("points") : QStringLiteral("scale"));
    put("scale", textOf(scale));
    put("points", pointsList(points));
    put("colour", colourText(spot.colour));
    put("threshold", textOf(spot.threshold));
    put("mindiameter", textOf(spot.smallestDiameter));
    put("maxdiameter", textOf(spot.largestDiameter));
    put("roundness", textOf(spot.roundness));
    put("reference", reference);
    put("inintDataList", initial ? initialMap(*initial) : QVariantMap());
    QVariantList entries;
    for (const LaserInput& input : inputs)
        entries += input.toMap();
    put("input", entries);
    return map;
}

std::optional<QString> LaserInfo::measureProblem() const {
    if (auto problem = spotProblem(spot))
        return problem;
    if (!reference.isEmpty() && referencePath(QString()).isEmpty())
        return Texts::tr("参考图文件名无效");
    if (mode == Mode::Points) {
        if (points.size() != PointCount)
            return Texts::tr("请先设置四个标定点!");
        return LaserScale::problem(arrayOf(points));
    }
    if (std::isnan(scale))
        return Texts::tr("请输入比例(毫米/像素)!");
    return LaserScale::fromScale(scale) ? std::nullopt : std::optional(Texts::tr("比例应大于0且不大于1000毫米/像素"));
}

std::optional<QString> LaserInfo::validate() const {
    if (auto problem = measureProblem())
        return problem;
    return initial ? std::nullopt : std::optional(Texts::tr("请先确定光斑初始位置!"));
}

std::optional<LaserScale> LaserInfo::makeScale() const {
    if (mode == Mode::Scale)
        return LaserScale::fromScale(scale);
    return points.size() == PointCount ? LaserScale::fromPoints(arrayOf(points)) : std::nullopt;
}

QString LaserInfo::referencePath(const QString& root) const {
    if (reference.isEmpty())
        return {};
    QString path = root;
    const QStringList parts = reference.split(QLatin1Char('/'));
    for (const QString& part : parts) {
        const auto component = corvanta::dataTree::pathComponent(part);
        if (!component) {
            qDebug() << "the name of a reference picture is no file's" << reference.left(200);
            return {};
        }
        path += QLatin1Char('/') + *component;
    }
    return path;
}

} // namespace corvanta::vision
