#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

/// The vocabularies of plans and rules: a code as it is stored, and what the user reads. One table a vocabulary.
namespace corvanta::linkage {

struct Word {
    QString code;
    QString text;
};
using Words = QList<Word>;

/// How conditions belong together: "and", "or". The first is meant where nothing is said.
Words logics();
/// How the actions of a combination are carried out: "all" at once, or one after the other ("loop").
Words outModes();
/// Threshold levels "1", "2", "3".
Words levels();
/// Durations that are offered; the code is what is stored. "-1" (for ever) is stored as a number.
Words durations();
/// What a template may hold, "($1)" to "($7)", and what it stands for.
Words placeholders();

/// The text of a code; a code that is not in the table reads as it is.
QString textOf(const Words& words, const QString& code);
/// The texts of several codes, parted by ", ".
QString textsOf(const Words& words, const QStringList& codes);
QStringList texts(const Words& words);
/// The position of a code, -1 when it is not there.
int indexOf(const Words& words, const QString& code);

/// The entries of a list of names that the service keeps: a list of {"code", "name"}, or an object whose "names" is
/// one. Entries without a code are left out.
Words wordsFrom(const QVariant& list);

/// The lists of names that plans and rules are written in ("获取下拉名称列表").
struct SystemNames {
    Words logics = linkage::logics(); ///< "linkplanlogic"; the usual ones while the service has named none
    Words reportTypes;                ///< "ReportType"
    Words reportModes;                ///< "ReportMode"

    static SystemNames fromReply(const QVariantMap& resp);
};

} // namespace corvanta::linkage
