#pragma once

#include "base/AppContext.h"
#include "map/MapDocument.h"

#include <QVariantMap>
#include <QVector>
#include <QWidget>

#include <array>

class QGridLayout;
class QToolButton;

namespace corvanta::map {

class ItemMapWidget;

/// How the maps are laid out: "一地图", "二地图", "四地图", "九地图".
struct MapLayout {
    int rows;
    int columns;
    int cells() const { return rows * columns; }
};
inline constexpr std::array<MapLayout, 4> MapLayouts{{{1, 1}, {1, 2}, {2, 2}, {3, 3}}};
inline constexpr int MostCells = 9;

/// The map module: one, two, four or nine maps. A cell that a smaller layout hides keeps its map and its alarms.
/// Which maps are open is kept in the database while the program runs, and in the settings.
class FwidgetElectronMap final : public QWidget {
    Q_OBJECT
public:
    explicit FwidgetElectronMap(const AppContext& context, QWidget* parent = nullptr);
    ~FwidgetElectronMap() override;

    MapDocument& document() { return document_; }
    int layoutNumber() const { return layout_; }
    /// `save` keeps it for the next start.
    void showLayout(int layout, bool save);
    /// Null where none was needed yet.
    ItemMapWidget* cell(int number) const { return cells_.value(number); }
    bool isOpen(const QString& mapId) const;
    /// The cell that is shown alone; -1: none is.
    int zoomed() const { return zoomed_; }

    void openManager();

    /// An alarm that came before there was this page, for the maps that are open.
    void takeAlarm(const QVariantMap& trigger);
    /// Shows where an alarm is: on a map that is open, else on one that is opened for it. Told when there is none.
    void showAlarm(const QString& ipncId, const QVariantMap& trigger);

private:
    QWidget* makeBar();
    ItemMapWidget* makeCell(int number);
    void place();
    void addMap(int number);
    void toggleZoom(int number);
    void keepOpenMaps();
    void onMaps();
    /// Opens what was open, once the maps are known.
    void restore();
    ItemMapWidget* cellFor(const QString& mapId);

    AppContext context_;
    MapDocument document_;
    QVector<ItemMapWidget*> cells_;
    QWidget* wall_ = nullptr;
    QGridLayout* grid_ = nullptr;
    QVector<QToolButton*> layoutButtons_;
    int layout_ = 0;
    int zoomed_ = -1;
    QString restoredFor_; ///< the account whose maps were opened again
};

/// The number of a layout as the settings have it; the first one for what is none.
int mapLayout(const QVariant& number, const QVariant& rows, const QVariant& columns);

} // namespace corvanta::map
