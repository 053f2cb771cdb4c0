#pragma once

namespace corvanta {

/// Takes the fonts that lie in the folder "fonts" beside the program where the system has none with Chinese letters.
/// Called before anything is shown.
void loadFonts();

/// Makes the program's drawings and texts (":/style/...") available and gives the application its font and its one
/// style sheet. Called before any widget is made: what is measured in letters while a widget is made is measured in
/// this font.
void applyStyle();

} // namespace corvanta
