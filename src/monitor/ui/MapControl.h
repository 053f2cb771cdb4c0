#pragma once

#include "base/AppContext.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QVariantMap>

class QWidget;

namespace corvanta::map {
class FwidgetElectronMap;
}

/// Maps in the main window: the page of the module, and the way there from an alarm. GUI thread.
class MapControl final : public QObject {
    Q_OBJECT
public:
    MapControl(const AppContext& context, QWidget& window);

    /// Page of the module; the caller's stack owns it.
    corvanta::map::FwidgetElectronMap* makePage(QWidget* parent);
    /// Null before it was made.
    corvanta::map::FwidgetElectronMap* page() const;

signals:
    /// The page of the maps is to be shown, and made if it is not there yet.
    void sigShowMaps();

private:
    void showAlarm(const QString& ipncId, const QVariantMap& trigger);

    AppContext context_;
    QPointer<corvanta::map::FwidgetElectronMap> page_;
    QMap<int, QVariantMap> missed_; ///< the last alarm of each input, while there is no page
};
