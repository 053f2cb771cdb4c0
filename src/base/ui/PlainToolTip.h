#pragma once

#include <QString>
#include <QTextDocument>

namespace corvanta {

/// A tool tip that shows `text` as it is, line by line: tool tips take what looks like markup for markup.
inline QString plainToolTip(const QString& text) {
    return text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpacePre);
}

} // namespace corvanta
