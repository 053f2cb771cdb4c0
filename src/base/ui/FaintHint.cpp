#include "base/ui/FaintHint.h"

#include <QLineEdit>
#include <QStyle>
#include <QVariant>

namespace corvanta {

void faintHint(QLineEdit& edit) {
    const auto follow = [&edit] {
        const bool hinting = edit.text().isEmpty();
        if (edit.property("hinting").isValid() && edit.property("hinting").toBool() == hinting)
            return;
        edit.setProperty("hinting", hinting);
        edit.style()->unpolish(&edit);
        edit.style()->polish(&edit);
    };
    QObject::connect(&edit, &QLineEdit::textChanged, &edit, follow);
    follow();
}

} // namespace corvanta
