#pragma once

#include "map/web/GeoPoint.h"

#include <QString>

namespace corvanta::map {

/// The script of one call of a function in the map's page. Arguments are appended in order; every text goes through
/// `quoted`, and no text is ever a template for another.
class ScriptCall final {
public:
    explicit ScriptCall(QLatin1String function)
        : script_(QString(function) + QLatin1Char('(')) {}

    ScriptCall& number(int value) { return append(QString::number(value)); }
    ScriptCall& flag(bool value) { return append(value ? QStringLiteral("true") : QStringLiteral("false")); }
    ScriptCall& text(const QString& value) { return append(quoted(value)); }
    ScriptCall& place(const GeoPoint& value) { return append(value.toCallArguments()); }

    QString script() const { return script_ + QStringLiteral(");"); }

    /// A text as a string of the script's language, in single quotes, whatever it is made of: nothing in it ends the
    /// string, the line or, were it one, the element that the script stands in. Halves of surrogate pairs stay what
    /// they are.
    static QString quoted(const QString& text);

private:
    ScriptCall& append(const QString& argument);

    QString script_;
    bool hasArguments_ = false;
};

} // namespace corvanta::map
