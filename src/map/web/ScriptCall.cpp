#include "map/web/ScriptCall.h"

namespace corvanta::map {

namespace {

/// Whether a unit must be written as its number: what could end a line or a string, what a reader of markup could
/// take for more than text, and halves of pairs, which not every coding on the way keeps.
bool isEscaped(QChar c) {
    const ushort unit = c.unicode();
    constexpr ushort Delete = 0x7f;
    constexpr ushort LineSeparator = 0x2028;
    constexpr ushort ParagraphSeparator = 0x2029;
    return unit < ' ' || unit == Delete || unit == '\'' || unit == '"' || unit == '`' || unit == '\\' ||
           unit == '<' || unit == '>' || unit == '&' || unit == LineSeparator || unit == ParagraphSeparator ||
           c.isSurrogate();
}

} // namespace

QString ScriptCall::quoted(const QString& text) {
    QString script;
    script.reserve(text.size() + 2);
    script += QLatin1Char('\'');
    for (const QChar c : text) {
        if (isEscaped(c))
            script += QStringLiteral("\\u") + QString::number(c.unicode(), 16).rightJustified(4, QLatin1Char('0'));
        else
            script += c;
    }
    return script + QLatin1Char('\'');
}

ScriptCall& ScriptCall::append(const QString& argument) {
    if (hasArguments_)
        script_ += QLatin1Char(',');
    script_ += argument;
    hasArguments_ = true;
    return *this;
}

} // namespace corvanta::map
