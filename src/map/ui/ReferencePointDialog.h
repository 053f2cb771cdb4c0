#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapDocument.h"

#include <QVariantMap>

class QPushButton;
class QTreeWidget;

namespace corvanta::map {

/// "设置参考点坐标": the reference points of a positioning sensor, in metres from the upper left corner of the map.
/// They belong to the sensor, so its record is what is saved.
class ReferencePointDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `document` outlives the dialog.
    ReferencePointDialog(const AppContext& context, MapDocument& document, QString mapId, const MapMarker& marker,
                         QWidget* parent);

private:
    void build();
    void add(const QString& x, const QString& y);
    void number();
    void save();

    AppContext context_;
    MapDocument& document_;
    const QString mapId_;
    MapMarker marker_;
    QVariantMap board_; ///< the sensor's record; empty: the sensor is gone
    QTreeWidget* list_ = nullptr;
    QPushButton* save_ = nullptr;
};

} // namespace corvanta::map
