#pragma once

#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <vector>

/// The parameters of a device that its configuration shows: what they are called, and which values the device takes.
namespace corvanta::manage {

enum class ParameterPage { Video, Image, Osd, Record, Ftp };
enum class ParameterKind {
    Flag,   ///< read as 0 or 1
    Number, ///< whole, from `least` to `most`
    Text,   ///< at most `most` characters
    Secret, ///< likewise; reads as asterisks, and writing those leaves it as it is
    Choice  ///< the position in `choices`
};

struct Parameter {
    const char* name; ///< as the device knows it
    ParameterPage page;
    ParameterKind kind;
    const char* section; ///< UTF-8, to be translated in the context "DeviceParameters", like the other texts
    const char* label;
    int least = 0;
    int most = 0;
    const char* unit = "";
    const char* choices = ""; ///< separated by '|'

    QString key() const { return QLatin1String(name); }
    QString labelText() const;
    QString sectionText() const;
    /// Section and label: a name that no other parameter has.
    QString fullText() const;
    QString unitText() const;
    QStringList choiceTexts() const;
};

/// In the order of their pages and of the rows there.
const std::vector<Parameter>& parameters();
std::vector<Parameter> parametersOf(ParameterPage page);
/// Null for a name that no page shows.
const Parameter* parameter(const QString& name);

/// Why the device would not take the value; nothing when it would.
std::optional<QString> problem(const Parameter& parameter, const QVariant& value);
/// The first problem of the values, in the order of the table; names that it does not have are passed over.
std::optional<QString> problem(const QVariantMap& values);

/// The entries of `after` that differ from `before`, in value, not in type: 1, true and "1" are the same.
QVariantMap changed(const QVariantMap& before, const QVariantMap& after);

/// Changes for the log, whose rows are Chinese in every language: "label: value", one after the other; secrets
/// without their value.
QString describe(const QVariantMap& values);

} // namespace corvanta::manage
