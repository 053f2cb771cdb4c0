#include "map/ui/FwidgetElectronMap.h"

#include "account/ui/AccountForm.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/ui/BarButton.h"
#include "base/ui/Theme.h"
#include "database/SqlHelp.h"
#include "map/SensorIndex.h"
#include "map/ui/AddMapwidget.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/ManageMapWidget.h"
#include "map/ui/MapSession.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace corvanta::map {

int mapLayout(const QVariant& number, const QVariant& rows, const QVariant& columns) {
    bool isNumber = false;
    const int known = number.toInt(&isNumber);
    if (number.isValid() && isNumber && known >= 0 && known < static_cast<int>(MapLayouts.size()))
        return known;
    const auto found = std::find_if(MapLayouts.begin(), MapLayouts.end(), [&](const MapLayout& one) {
        return one.rows == rows.toInt() && one.columns == columns.toInt();
    });
    return found == MapLayouts.end() ? 0 : static_cast<int>(found - MapLayouts.begin());
}

FwidgetElectronMap::FwidgetElectronMap(const AppContext& context, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , document_(context)
    , cells_(MostCells, nullptr) {
    setObjectName(QStringLiteral("FwidgetElectronMap"));
    wordedName(this, [] { return tr("电子地图"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeBar());
    wall_ = new QWidget(this);
    grid_ = new QGridLayout(wall_);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(theme::Step);
    column->addWidget(wall_, 1);
    const Settings& settings = context_.settings;
    showLayout(mapLayout(settings.get(keys::MapZoom), settings.get(keys::MapRows), settings.get(keys::MapColumns)),
               false);
    connect(&document_, &MapDocument::sigMapsChanged, this, &FwidgetElectronMap::onMaps);
    onMaps();
}

FwidgetElectronMap::~FwidgetElectronMap() {
    qDeleteAll(cells_); // before the document, which they look into
}

QWidget* FwidgetElectronMap::makeBar() {
    static constexpr std::array<const char*, MapLayouts.size()> names{QT_TR_NOOP("一地图"), QT_TR_NOOP("二地图"),
                                                                      QT_TR_NOOP("四地图"), QT_TR_NOOP("九地图")};
    auto* const bar = new QWidget(this);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(2 * theme::Step, 0, theme::Step, 0);
    row->setSpacing(theme::Step);
    for (std::size_t i = 0; i < MapLayouts.size(); ++i) {
        const int cells = MapLayouts[i].cells();
        QToolButton* const button = barButton(
            bar, QStringLiteral("mapLayout%1").arg(cells), [i] { return tr(names[i]); },
            cells == 2 ? QStringLiteral("2_columns") : QStringLiteral("%1_pic").arg(cells));
        button->setCheckable(true);
        connect(button, &QToolButton::clicked, this, [this, i] { showLayout(static_cast<int>(i), true); });
        layoutButtons_ += button;
        row->addWidget(button);
    }
    row->addStretch(1);
    QToolButton* const manage = barButton(
        bar, QStringLiteral("mapManage"), [] { return tr("管理地图"); }, QStringLiteral("settings"));
    connect(manage, &QToolButton::clicked, this, &FwidgetElectronMap::openManager);
    row->addWidget(manage);
    return bar;
}

ItemMapWidget* FwidgetElectronMap::makeCell(int number) {
    auto* const cell = new ItemMapWidget(context_, document_, number, wall_);
    connect(cell, &ItemMapWidget::sigAdd, this, &FwidgetElectronMap::addMap);
    connect(cell, &ItemMapWidget::sigManage, this, &FwidgetElectronMap::openManager);
    connect(cell, &ItemMapWidget::sigZoom, this, &FwidgetElectronMap::toggleZoom);
    connect(cell, &ItemMapWidget::sigChanged, this, &FwidgetElectronMap::keepOpenMaps);
    return cell;
}

void FwidgetElectronMap::showLayout(int layout, bool save) {
    layout_ = layout;
    zoomed_ = -1;
    place();
    if (!save)
        return;
    const MapLayout shape = MapLayouts[static_cast<std::size_t>(layout)];
    context_.settings.set(keys::MapRows, shape.rows);
    context_.settings.set(keys::MapColumns, shape.columns);
    context_.settings.set(keys::MapZoom, layout);
    context_.settings.save();
}

void FwidgetElectronMap::place() {
    const MapLayout shape = zoomed_ >= 0 ? MapLayout{1, 1} : MapLayouts[static_cast<std::size_t>(layout_)];
    const int first = std::max(zoomed_, 0);
    for (int i = 0; i < MostCells; ++i) {
        if (i < first || i >= first + shape.cells()) {
            if (cells_[i] != nullptr)
                cells_[i]->hide();
            continue;
        }
        if (cells_[i] == nullptr)
            cells_[i] = makeCell(i);
        const int shown = i - first;
        grid_->addWidget(cells_[i], shown / shape.columns, shown % shape.columns);
        cells_[i]->show();
    }
    for (int i = 0; i < grid_->rowCount(); ++i)
        grid_->setRowStretch(i, i < shape.rows ? 1 : 0);
    for (int i = 0; i < grid_->columnCount(); ++i)
        grid_->setColumnStretch(i, i < shape.columns ? 1 : 0);
    for (int i = 0; i < layoutButtons_.size(); ++i)
        layoutButtons_[i]->setChecked(i == layout_);
}

void FwidgetElectronMap::toggleZoom(int number) {
    if (MapLayouts[static_cast<std::size_t>(layout_)].cells() == 1)
        return;
    zoomed_ = zoomed_ >= 0 ? -1 : number;
    place();
}

bool FwidgetElectronMap::isOpen(const QString& mapId) const {
    return std::any_of(cells_.begin(), cells_.end(),
                       [&mapId](const ItemMapWidget* cell) { return cell != nullptr && cell->mapId() == mapId; });
}

void FwidgetElectronMap::openManager() {
    auto* const dialog = new ManageMapWidget(
        context_, document_, [this](const QString& id) { return isOpen(id); }, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void FwidgetElectronMap::addMap(int number) {
    auto* const dialog = new AddMapwidget(context_, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &AddMapwidget::sigAdded, this, [this, number](const QString& mapId) {
        ItemMapWidget* const cell = cells_[number];
        if (cell != nullptr && cell->mapId().isEmpty())
            cell->openMap(mapId);
    });
    dialog->open();
}

void FwidgetElectronMap::keepOpenMaps() {
    if (context_.gateway.phoneId().isEmpty())
        return; // who signs in again finds them open
    QStringList ids;
    context_.database.writeTogether();
    context_.database.clearElectronMaps();
    for (int i = 0; i < MostCells; ++i) {
        const QString id = cells_[i] == nullptr ? QString() : cells_[i]->mapId();
        ids += id;
        if (const MapRecord* const map = document_.map(id))
            context_.database.addElectronMap(i, id, map->name);
    }
    context_.settings.set(keys::OpenMaps, ids);
    context_.settings.save();
}

void FwidgetElectronMap::onMaps() {
    const QString account = context_.gateway.phoneId();
    if (account.isEmpty()) {
        restoredFor_.clear();
        return; // cells close by themselves
    }
    if (restoredFor_ == account || document_.maps().isEmpty())
        return;
    restoredFor_ = account;
    restore();
}

void FwidgetElectronMap::restore() {
    const QStringList kept = context_.settings.get(keys::RestoreState).toBool()
                                 ? context_.settings.get(keys::OpenMaps).toStringList()
                                 : QStringList();
    QStringList wanted;
    for (int i = 0; i < MostCells; ++i) {
        const QString cached = context_.database.getElectronMap(i).mappid;
        wanted += cached.isEmpty() ? kept.value(i) : cached;
    }
    for (int i = 0; i < MostCells; ++i) {
        if (document_.map(wanted[i]) == nullptr)
            continue;
        if (cells_[i] == nullptr) {
            cells_[i] = makeCell(i);
            cells_[i]->hide(); // behind the layout
        }
        if (cells_[i]->mapId().isEmpty())
            cells_[i]->openMap(wanted[i]);
    }
    place();
}

ItemMapWidget* FwidgetElectronMap::cellFor(const QString& mapId) {
    const int shown = MapLayouts[static_cast<std::size_t>(layout_)].cells();
    int chosen = 0;
    while (chosen < shown && !cells_[chosen]->mapId().isEmpty())
        ++chosen;
    ItemMapWidget* const cell = cells_[chosen < shown ? chosen : 0];
    cell->openMap(mapId);
    return cell;
}

void FwidgetElectronMap::takeAlarm(const QVariantMap& trigger) {
    for (ItemMapWidget* const cell : qAsConst(cells_)) {
        if (cell != nullptr && cell->session() != nullptr)
            cell->session()->OntriggerAlarm(trigger);
    }
}

void FwidgetElectronMap::showAlarm(const QString& ipncId, const QVariantMap& trigger) {
    const auto showIn = [&](ItemMapWidget* cell) {
        if (cell->session() == nullptr || !cell->session()->showAlarmPlace(ipncId, trigger))
            return false;
        const int number = cell->number();
        if (cell->isHidden() || (zoomed_ >= 0 && zoomed_ != number)) {
            zoomed_ = number < MapLayouts[static_cast<std::size_t>(layout_)].cells() ? -1 : number;
            place();
        }
        cell->session()->OntriggerAlarm(trigger);
        return true;
    };
    for (ItemMapWidget* const cell : qAsConst(cells_)) {
        if (cell != nullptr && showIn(cell))
            return;
    }
    const SensorIndex index(context_.devices);
    // The map that has the sensor itself, else one with anything of its device.
    QString found;
    for (const MapRecord& map : document_.maps()) {
        const QList<int> markers = index.markersOf(trigger, map.markers);
        if (!markers.isEmpty() && !map.markers[markers.constFirst()].isCamera()) {
            found = map.id;
            break;
        }
        const bool hasDevice = std::any_of(map.markers.begin(), map.markers.end(),
                                           [&ipncId](const MapMarker& one) { return one.ipncId == ipncId; });
        if (hasDevice && found.isEmpty())
            found = map.id;
    }
    if (found.isEmpty() || !showIn(cellFor(found)))
        account::tell(tr("该报警的设备未放置在地图上!"), this);
}

} // namespace corvanta::map
