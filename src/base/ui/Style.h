#pragma once

#include <QString>

namespace corvanta {

/// Makes the program's drawings and texts (":/style/...") available and returns the one style sheet. Called before
/// anything is shown.
QString loadStyle();

} // namespace corvanta
