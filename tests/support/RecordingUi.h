#pragma once

#include "base/AppUi.h"

#include <QStringList>

/// Writes down what the application core wants shown.
class RecordingUi final : public AppUi {
public:
    void showTip(const QString& title, const QString& text) override;
    void showSignIn(bool automatic) override;
    void showWait(bool visible, const QRect& area, int milliseconds) override;

    QStringList tips;    ///< "title|text"
    QList<bool> signIns; ///< automatic or not
    QStringList waits;   ///< "visible|x,y,w,h|ms"
};
