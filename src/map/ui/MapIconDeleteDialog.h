#pragma once

#include "account/ui/ListDialog.h"
#include "map/MapDocument.h"

class QPushButton;

namespace corvanta::map {

/// The markers of a map, to be deleted.
class MapIconDeleteDialog final : public ListDialog {
    Q_OBJECT
public:
    /// `document` outlives the dialog.
    MapIconDeleteDialog(const AppContext& context, MapDocument& document, QString mapId, QWidget* parent);

private:
    void fill();
    void askToDelete();
    void deleteMarker(const MapMarker& marker);

    MapDocument& document_;
    const QString mapId_;
    QPushButton* delete_;
};

} // namespace corvanta::map
