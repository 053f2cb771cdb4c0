#include "support/RecordingUi.h"

void RecordingUi::showTip(const QString& title, const QString& text) {
    tips += title + QLatin1Char('|') + text;
}

void RecordingUi::showSignIn(bool automatic) {
    signIns += automatic;
}

void RecordingUi::showWait(bool visible, const QRect& area, int milliseconds) {
    waits += QStringLiteral("%1|%2,%3,%4,%5|%6")
                 .arg(visible)
                 .arg(area.x())
                 .arg(area.y())
                 .arg(area.width())
                 .arg(area.height())
                 .arg(milliseconds);
}
