#pragma once

#include <QString>

namespace corvanta {

/// Takes the fonts that lie in the folder "fonts" beside the program where the system has none with Chinese letters.
/// Called before anything is shown.
void loadFonts();

/// Makes the program's drawings and texts (":/style/...") available and returns the one style sheet. Called before
/// anything is shown.
QString loadStyle();

} // namespace corvanta
