#include "map/MarkerRules.h"

#include "sensor/Samples.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta::map {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(MapRules)
};

bool isDistance(const QString& text) {
    constexpr double farthest = 1e6; // m
    const auto number = sensor::readNumber(text.trimmed());
    return number && *number > 0 && *number <= farthest;
}

std::optional<QString> checkDistances(const MapDraft& draft) {
    if (draft.distanceX.trimmed().isEmpty() || draft.distanceY.trimmed().isEmpty())
        return Texts::tr("请输入实际距离!");
    if (!isDistance(draft.distanceX) || !isDistance(draft.distanceY))
        return Texts::tr("实际距离应为大于0的数字!");
    return std::nullopt;
}

bool isWithin(const QString& text, double most) {
    const auto number = sensor::readNumber(text.trimmed());
    return number && *number <= most;
}

} // namespace

std::optional<QRectF> boundsOf(const QList<MapMarker>& markers) {
    if (markers.isEmpty())
        return std::nullopt;
    const auto [left, right] =
        std::minmax_element(markers.begin(), markers.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(markers.begin(), markers.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
    return QRectF(QPointF(left->x, top->y), QPointF(right->x, bottom->y));
}

std::optional<QPointF> fractionOf(const QPointF& metres, const MapRecord& map) {
    if (map.width <= 0 || map.height <= 0)
        return std::nullopt;
    const QPointF place(metres.x() / map.width, metres.y() / map.height);
    const bool isOnIt = place.x() >= 0 && place.x() <= 1 && place.y() >= 0 && place.y() <= 1;
    return isOnIt ? std::optional(place) : std::nullopt;
}

QString referenceName(int number) {
    return Texts::tr("参考点%1").arg(number + 1);
}

QString alarmPicture(int level) {
    static constexpr std::array<const char*, 4> pictures{
        ":/style/img/onelevlealarm.gif", ":/style/img/twolevlealarm.gif", ":/style/img/threelevelalarm.gif",
        ":/style/img/otheralarm.gif"};
    return level >= 1 && level <= 4 ? QLatin1String(pictures[static_cast<std::size_t>(level - 1)]) : QString();
}

std::optional<QString> checkNew(const MapDraft& draft) {
    if (draft.name.trimmed().isEmpty())
        return Texts::tr("请输入地图名称!");
    if (draft.type != MapType::Local)
        return std::nullopt;
    if (draft.picture.isEmpty())
        return Texts::tr("请选择地图!");
    return checkDistances(draft);
}

std::optional<QString> checkEdited(const MapDraft& draft) {
    if (draft.name.trimmed().isEmpty())
        return Texts::tr("请输入地图名称!");
    return draft.type == MapType::Local ? checkDistances(draft) : std::nullopt;
}

QVariantMap mapInfo(const MapDraft& draft) {
    QVariantMap info{
        {QStringLiteral("name"), draft.name.trimmed()},
        {QStringLiteral("type"), draft.type == MapType::Local ? QStringLiteral("local") : QStringLiteral("online")}};
    if (draft.type == MapType::Local) {
        const QVariantMap distance{{QStringLiteral("w"), draft.distanceX.trimmed()},
                                   {QStringLiteral("h"), draft.distanceY.trimmed()}};
        info.insert(QStringLiteral("range"), QVariantMap{{QStringLiteral("distance"), distance}});
    }
    return info;
}

QString typeText(MapType type) {
    switch (type) {
    case MapType::Local:
        return Texts::tr("自定义地图");
    case MapType::Online:
        return Texts::tr("在线地图");
    case MapType::Unknown:
        break;
    }
    return Texts::tr("未知");
}

QString ownerText(const MapRecord& map) {
    return map.shared ? Texts::tr("其他账号") : Texts::tr("本账号");
}

std::optional<QString> checkMarker(const QString& name, const QString& first, const QString& second, MapType type) {
    if (name.trimmed().isEmpty())
        return Texts::tr("请输入显示名称!");
    const auto one = sensor::readNumber(first.trimmed());
    const auto other = sensor::readNumber(second.trimmed());
    if (type == MapType::Online) {
        if (!one || std::abs(*one) > 180)
            return Texts::tr("经度应在-180到180之间!");
        if (!other || std::abs(*other) > 90)
            return Texts::tr("纬度应在-90到90之间!");
        return std::nullopt;
    }
    if (!one || *one < 0 || !isWithin(first, 1))
        return Texts::tr("X坐标应在0到1之间!");
    if (!other || *other < 0 || !isWithin(second, 1))
        return Texts::tr("Y坐标应在0到1之间!");
    return std::nullopt;
}

} // namespace corvanta::map
