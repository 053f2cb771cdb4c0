#include "video/AvMessage.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <limits>

namespace corvanta::video {

namespace {

constexpr std::array openingTexts = {QT_TRANSLATE_NOOP("AvReport", "正在获取视频信息..."),
                                     QT_TRANSLATE_NOOP("AvReport", "正在建立视频连接..."),
                                     QT_TRANSLATE_NOOP("AvReport", "正在加载视频数据...")};
constexpr auto openedSource = QT_TRANSLATE_NOOP("AvReport", "打开成功");
constexpr auto failedSource = QT_TRANSLATE_NOOP("AvReport", "打开失败(%1)");

/// The integer of a JSON value without loss. A number that had to become a floating-point one on the way (a fraction,
/// or wider than 64 bits) is none.
std::optional<std::int64_t> exactInteger(const QJsonValue& value) {
    const QVariant number = value.toVariant();
    const int type = number.userType();
    if (type != QMetaType::LongLong && type != QMetaType::Int) {
        return std::nullopt;
    }
    return number.toLongLong();
}

/// A side of a picture; 0 when it is no integer or out of the range that is taken.
unsigned sideOf(const QJsonValue& value) {
    const auto side = exactInteger(value);
    return side && *side > 0 && *side <= maxFrameSide ? static_cast<unsigned>(*side) : 0U;
}

QString inWords(const QJsonValue& value) {
    const QString text = value.toVariant().toString().left(32);
    return text.isEmpty() ? QStringLiteral("nothing") : text;
}

std::variant<AvFrame, AvFrameRefused> frameOf(const QJsonObject& message) {
    const QJsonValue data = message.value(QLatin1String("data"));
    const QJsonValue width = message.value(QLatin1String("w"));
    const QJsonValue height = message.value(QLatin1String("h"));
    const FrameSize size{sideOf(width), sideOf(height)};
    if (!isUsable(size)) {
        return AvFrameRefused{QStringLiteral("picture refused: size %1 x %2").arg(inWords(width), inWords(height))};
    }
    const auto number = exactInteger(data);
    const auto address = number ? addressFromInteger(*number, sizeof(void*)) : std::nullopt;
    if (!address || *address == 0) {
        return AvFrameRefused{QStringLiteral("picture refused: address %1").arg(inWords(data))};
    }
    return AvFrame{reinterpret_cast<const std::uint8_t*>(static_cast<std::uintptr_t>(*address)), size};
}

/// The value as an int; `fallback` when it is missing, no number, or does not fit.
int intOf(const QVariantMap& map, const char* key, int fallback) {
    bool isNumber = false;
    const qlonglong value = map.value(QLatin1String(key)).toLongLong(&isNumber);
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return isNumber && fits ? static_cast<int>(value) : fallback;
}

AvReport::Kind kindOf(const QString& type, int retcode) {
    if (type == QLatin1String("avstate")) {
        return AvReport::Kind::State;
    }
    if (type == QLatin1String("avopen")) {
        return AvReport::Kind::Open;
    }
    return type == QLatin1String("avclose") || retcode != 0 ? AvReport::Kind::Close : AvReport::Kind::Other;
}

} // namespace

AvMessage parseAvMessage(std::string_view json) {
    if (json.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return AvReportMap{};
    }
    const QByteArray bytes = QByteArray::fromRawData(json.data(), static_cast<int>(json.size()));
    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    if (message.value(QLatin1String("type")).toString() != QLatin1String("decodevideodata")) {
        return message.toVariantMap();
    }
    return std::visit([](auto&& frame) -> AvMessage { return std::forward<decltype(frame)>(frame); },
                      frameOf(message));
}

std::optional<std::uint64_t> addressFromInteger(std::int64_t value, std::size_t pointerBytes) {
    if (pointerBytes >= sizeof(std::uint64_t)) {
        return static_cast<std::uint64_t>(value);
    }
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::uint32_t>::max();
    if (value < lowest || value > highest) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(value);
}

AvReport AvReport::fromMap(const QVariantMap& map) {
    AvReport report;
    report.deviceId = map.value(QStringLiteral("DeviceId")).toString();
    report.tileIndex = intOf(map, "index", -1);
    report.requestId = intOf(map, "reqid", 0);
    report.state = intOf(map, "state", -1);
    report.retcode = intOf(map, "retcode", 0);
    report.connectionType = map.value(QStringLiteral("contype")).toString();
    report.parameters = map.value(QStringLiteral("avparam")).toMap();
    report.kind = kindOf(map.value(QStringLiteral("type")).toString(), report.retcode);
    return report;
}

QVariantMap toGuiMap(AvReportMap report, const QString& deviceId, int tileIndex) {
    report.insert(QStringLiteral("DeviceId"), deviceId);
    report.insert(QStringLiteral("index"), tileIndex);
    return report;
}

QString openingText(int state) {
    const std::size_t last = openingTexts.size() - 1;
    return QString::fromUtf8(openingTexts[state < 0 ? last : std::min(static_cast<std::size_t>(state), last)]);
}

QString openedText() {
    return QString::fromUtf8(openedSource);
}

QString failedText(int retcode) {
    return QString::fromUtf8(failedSource).arg(retcode);
}

QString shownText(const QString& text) {
    const auto translated = [](const char* source) {
        return QCoreApplication::translate("AvReport", source);
    };
    const auto same = std::find_if(openingTexts.begin(), openingTexts.end(),
                                   [&text](const char* source) { return text == QString::fromUtf8(source); });
    if (same != openingTexts.end())
        return translated(*same);
    if (text == openedText())
        return translated(openedSource);
    static const QRegularExpression failure(
        QLatin1Char('^') +
        QRegularExpression::escape(QString::fromUtf8(failedSource))
            .replace(QRegularExpression::escape(QStringLiteral("%1")), QStringLiteral("(-?[0-9]+)")) +
        QLatin1Char('$'));
    const QRegularExpressionMatch match = failure.match(text);
    return match.hasMatch() ? translated(failedSource).arg(match.captured(1)) : text;
}

} // namespace corvanta::video
