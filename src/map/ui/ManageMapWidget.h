#pragma once

#include "account/ui/ListDialog.h"
#include "map/MapDocument.h"

#include <functional>

class QPushButton;

namespace corvanta::map {

/// The list of maps: the account's own, which it changes, and those that friends share with it.
class ManageMapWidget final : public ListDialog {
    Q_OBJECT
public:
    /// `isOpen` tells of a map's id whether a cell shows it. `document` outlives the dialog.
    ManageMapWidget(const AppContext& context, MapDocument& document, std::function<bool(const QString&)> isOpen,
                    QWidget* parent);

signals:
    /// A map was added, by its id.
    void sigAdded(QString mapId);

private:
    void addButtons();
    void fill();
    const MapRecord* chosen(const QString& noneText);
    /// Tells `refusal` when a map is not the account's own.
    bool isOwn(const MapRecord& map, const QString& refusal);
    void add();
    void edit();
    void manageMarkers();
    void share();
    void chooseFriends(const MapRecord& map, const QVariantMap& resp);
    void submitShare(const MapRecord& map, const QStringList& phones);
    void askToDelete();
    void deleteMap(const MapRecord& map);

    MapDocument& document_;
    const std::function<bool(const QString&)> isOpen_;
    QPushButton* share_ = nullptr;
    QPushButton* delete_ = nullptr;
};

} // namespace corvanta::map
