#include "manageWidget/TimeZones.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace corvanta::manage {
namespace {

// The list is a file, in which the translators' tool does not look.
constexpr std::array names{
    QT_TRANSLATE_NOOP("TimeZones", "国际日期变更线西"),
    QT_TRANSLATE_NOOP("TimeZones", "中途岛"),
    QT_TRANSLATE_NOOP("TimeZones", "夏威夷"),
    QT_TRANSLATE_NOOP("TimeZones", "阿拉斯加"),
    QT_TRANSLATE_NOOP("TimeZones", "太平洋时间(美国和加拿大)"),
    QT_TRANSLATE_NOOP("TimeZones", "山地时间(美国和加拿大)"),
    QT_TRANSLATE_NOOP("TimeZones", "中部时间(美国和加拿大)"),
    QT_TRANSLATE_NOOP("TimeZones", "东部时间(美国和加拿大)"),
    QT_TRANSLATE_NOOP("TimeZones", "大西洋时间(加拿大)"),
    QT_TRANSLATE_NOOP("TimeZones", "纽芬兰"),
    QT_TRANSLATE_NOOP("TimeZones", "巴西利亚, 布宜诺斯艾利斯"),
    QT_TRANSLATE_NOOP("TimeZones", "中大西洋"),
    QT_TRANSLATE_NOOP("TimeZones", "亚速尔群岛"),
    QT_TRANSLATE_NOOP("TimeZones", "伦敦, 都柏林, 里斯本"),
    QT_TRANSLATE_NOOP("TimeZones", "柏林, 巴黎, 罗马, 马德里"),
    QT_TRANSLATE_NOOP("TimeZones", "雅典, 开罗, 耶路撒冷"),
    QT_TRANSLATE_NOOP("TimeZones", "莫斯科, 伊斯坦布尔, 巴格达"),
    QT_TRANSLATE_NOOP("TimeZones", "德黑兰"),
    QT_TRANSLATE_NOOP("TimeZones", "迪拜, 巴库"),
    QT_TRANSLATE_NOOP("TimeZones", "喀布尔"),
    QT_TRANSLATE_NOOP("TimeZones", "伊斯兰堡, 塔什干"),
    QT_TRANSLATE_NOOP("TimeZones", "孟买, 新德里"),
    QT_TRANSLATE_NOOP("TimeZones", "加德满都"),
    QT_TRANSLATE_NOOP("TimeZones", "达卡, 阿拉木图"),
    QT_TRANSLATE_NOOP("TimeZones", "仰光"),
    QT_TRANSLATE_NOOP("TimeZones", "曼谷, 河内, 雅加达"),
    QT_TRANSLATE_NOOP("TimeZones", "北京, 香港, 台北, 新加坡"),
    QT_TRANSLATE_NOOP("TimeZones", "东京, 首尔"),
    QT_TRANSLATE_NOOP("TimeZones", "阿德莱德, 达尔文"),
    QT_TRANSLATE_NOOP("TimeZones", "悉尼, 墨尔本, 关岛"),
    QT_TRANSLATE_NOOP("TimeZones", "所罗门群岛"),
    QT_TRANSLATE_NOOP("TimeZones", "奥克兰, 斐济"),
    QT_TRANSLATE_NOOP("TimeZones", "努库阿洛法"),
};

} // namespace

QString zonePlaces(const QString& name) {
    const auto known =
        std::find_if(names.begin(), names.end(), [&name](const char* one) { return name == QString::fromUtf8(one); });
    return known == names.end() ? name : QCoreApplication::translate("TimeZones", *known);
}

} // namespace corvanta::manage
