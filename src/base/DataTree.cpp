#include "base/DataTree.h"

#include <QDate>

#include <algorithm>

namespace corvanta::dataTree {
namespace {

bool isReserved(const QString& text) {
    const QString base = text.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    if (base == QLatin1String("CON") || base == QLatin1String("PRN") || base == QLatin1String("AUX") ||
        base == QLatin1String("NUL"))
        return true;
    if (base == QLatin1String("CONIN$") || base == QLatin1String("CONOUT$"))
        return true;
    return base.size() == 4 && (base.startsWith(QLatin1String("COM")) || base.startsWith(QLatin1String("LPT"))) &&
           base.at(3).digitValue() >= 0; // also the raised digits
}

bool isAllowed(QChar c) {
    static const QString Forbidden = QStringLiteral("/\\:*?\"<>|");
    return c.unicode() >= 0x20 && c.unicode() != 0x7f && !Forbidden.contains(c);
}

} // namespace

const QStringList& kindsByDay() {
    static const QStringList Kinds{Capture, Image, LocalRecord, DeviceRecord};
    return Kinds;
}

std::optional<QString> pathComponent(const QString& text) {
    constexpr int LongestName = 255; // bytes, on the file systems of Linux and (in units) of Windows
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() || bytes.size() > LongestName || QString::fromUtf8(bytes) != text) // half a letter
        return std::nullopt;
    if (!std::all_of(text.begin(), text.end(), isAllowed))
        return std::nullopt;
    // Windows drops dots and blanks at the end, so such a name would mean another file; "." and ".." end in a dot.
    if (text.endsWith(QLatin1Char('.')) || text.endsWith(QLatin1Char(' ')) || isReserved(text))
        return std::nullopt;
    return text;
}

std::optional<QString> folder(const QString& drive, const QString& kind, const QString& ipncid, const QString& day) {
    const auto device = pathComponent(ipncid);
    const auto kindName = pathComponent(kind);
    if (!device || !kindName)
        return std::nullopt;
    const QString base = drive + QStringLiteral("ZEL/") + *device + QLatin1Char('/') + *kindName + QLatin1Char('/');
    if (kind == InputData)
        return base;
    const QString today = QDate::currentDate().toString(DayFormat);
    const auto dayName = pathComponent(day.isEmpty() ? today : day);
    if (!dayName)
        return std::nullopt;
    return base + *dayName + QLatin1Char('/');
}

} // namespace corvanta::dataTree
