#pragma once

class QLineEdit;

namespace corvanta {

/// Lets the style sheet colour an edit's hint apart from its text: the property "hinting" is true while it is empty.
void faintHint(QLineEdit& edit);

} // namespace corvanta
