#include "map/ui/MapIconDeleteDialog.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/ui/MapIcons.h"
#include "map/ui/MapSend.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

#include <utility>

namespace corvanta::map {
namespace {
enum Column { NumberColumn, NameColumn };
constexpr int LongestShown = 200; // characters
} // namespace

MapIconDeleteDialog::MapIconDeleteDialog(const AppContext& context, MapDocument& document, QString mapId,
                                         QWidget* parent)
    : ListDialog(context, tr("标记管理"), {tr("编号"), tr("标记点名称")}, tr("该地图上没有标记点"), parent)
    , document_(document)
    , mapId_(std::move(mapId))
    , delete_(addButton(tr("删除"), QStringLiteral("markerListDelete"), false)) {
    setObjectName(QStringLiteral("MapIconDeleteDialog"));
    list().setColumnWidth(NumberColumn, 64); // px
    connect(delete_, &QPushButton::clicked, this, &MapIconDeleteDialog::askToDelete);
    connect(addButton(tr("关闭"), QStringLiteral("markerListClose"), true), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(&document_, &MapDocument::sigMapsChanged, this, &MapIconDeleteDialog::fill);
    fill();
}

void MapIconDeleteDialog::fill() {
    beginFill();
    if (const MapRecord* const map = document_.map(mapId_)) {
        int number = 0;
        for (const MapMarker& marker : map->markers)
            addRow(marker.id, {QString::number(++number), marker.name.left(LongestShown)})
                ->setIcon(NameColumn, markerIcon(marker));
    }
    endFill();
}

void MapIconDeleteDialog::askToDelete() {
    const MapRecord* const map = document_.map(mapId_);
    const QTreeWidgetItem* const item = demandOne(tr("请选择要删除的标记点!"));
    const int index = item == nullptr || map == nullptr ? -1 : map->indexOf(keyOf(*item));
    if (index < 0)
        return;
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确定删除标记?"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this, marker = map->markers[index]] {
                         deleteMarker(marker);
                     }});
}

void MapIconDeleteDialog::deleteMarker(const MapMarker& marker) {
    manage::send(
        context(), this,
        {.json = requests::accountRequest(QStringLiteral("删除地图传感器"), deletionParameters(mapId_, marker)),
         .busy = delete_,
         .done = [this, marker](const QVariantMap&) {
             logChange(context(), QStringLiteral("删除标记"), marker.name);
             account::tell(tr("删除成功!"), this);
             document_.removeMarker(mapId_, marker.id);
         }});
}

} // namespace corvanta::map
