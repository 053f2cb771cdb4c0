#include "account/EntryChecks.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvanta::account {

std::optional<QString> checkName(const QString& name, const QString& empty) {
    const auto codePoints = name.toUcs4(); // an emoji counts once
    if (name.trimmed().isEmpty())
        return empty;
    if (codePoints.size() > LongestName)
        return QCoreApplication::translate("EntryChecks", "名称过长，最多%1个字符!").arg(LongestName);
    const auto isControl = [](uint one) {
        return one < 0x20 || one == 0x7f;
    };
    if (std::any_of(codePoints.begin(), codePoints.end(), isControl))
        return QCoreApplication::translate("EntryChecks", "名称不能包含控制字符!");
    return std::nullopt;
}

} // namespace corvanta::account
