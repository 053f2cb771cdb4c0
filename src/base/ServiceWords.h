#pragma once

#include <QString>

namespace corvanta {

/// What a service says in Chinese and means the same everywhere (kinds of sensors, their parameters, ways of
/// notifying), in the language that is spoken now; a word that is not known stays as it is. For words only, never for
/// names that users gave. Any thread.
QString serviceWord(const QString& word);

} // namespace corvanta
