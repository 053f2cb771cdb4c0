#include "map/ui/ManageMapWidget.h"

#include "account/ShareModel.h"
#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/RequestBuilder.h"
#include "base/ui/TipDialog.h"
#include "linkage/ui/CheckPicker.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/MarkerRules.h"
#include "map/ui/AddMapwidget.h"
#include "map/ui/MapIconDeleteDialog.h"
#include "map/ui/MapSend.h"
#include "map/ui/SetElectronMapDialog.h"

#include <QPushButton>
#include <QTreeWidget>

#include <utility>

namespace corvanta::map {
namespace {
enum Column { NumberColumn, NameColumn, TypeColumn, OwnerColumn };
constexpr int LongestShown = 200; // characters
} // namespace

ManageMapWidget::ManageMapWidget(const AppContext& context, MapDocument& document,
                                 std::function<bool(const QString&)> isOpen, QWidget* parent)
    : ListDialog(context, tr("管理地图"), {tr("编号"), tr("地图名称"), tr("地图模式"), tr("归属")},
                 tr("还没有地图，点击“添加”开始添加"), parent)
    , document_(document)
    , isOpen_(std::move(isOpen)) {
    setObjectName(QStringLiteral("ManageMapWidget"));
    list().setColumnWidth(NumberColumn, 64); // px
    list().setColumnWidth(NameColumn, 220);
    list().setColumnWidth(TypeColumn, 120);
    addButtons();
    connect(&document_, &MapDocument::sigMapsChanged, this, &ManageMapWidget::fill);
    fill();
}

void ManageMapWidget::addButtons() {
    const auto button = [this](const QString& text, const char* name, void (ManageMapWidget::*act)()) {
        QPushButton* const made = addButton(text, QLatin1String(name), false);
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    button(tr("添加"), "mapListAdd", &ManageMapWidget::add);
    button(tr("编辑"), "mapListEdit", &ManageMapWidget::edit);
    button(tr("标记管理"), "mapListMarkers", &ManageMapWidget::manageMarkers);
    share_ = button(tr("分享"), "mapListShare", &ManageMapWidget::share);
    delete_ = button(tr("删除"), "mapListDelete", &ManageMapWidget::askToDelete);
    connect(&list(), &QTreeWidget::itemActivated, this, &ManageMapWidget::edit);
}

void ManageMapWidget::fill() {
    beginFill();
    int number = 0;
    for (const MapRecord& map : document_.maps()) {
        QTreeWidgetItem* const row = addRow(
            map.id, {QString::number(++number), map.name.left(LongestShown), typeText(map.type), ownerText(map)});
        if (map.shared)
            row->setToolTip(OwnerColumn, map.ownerId);
    }
    endFill();
}

const MapRecord* ManageMapWidget::chosen(const QString& noneText) {
    const QTreeWidgetItem* const item = demandOne(noneText);
    return item == nullptr ? nullptr : document_.map(keyOf(*item));
}

bool ManageMapWidget::isOwn(const MapRecord& map, const QString& refusal) {
    if (map.shared)
        account::tell(refusal, this);
    return !map.shared;
}

void ManageMapWidget::add() {
    auto* const dialog = new AddMapwidget(context(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &AddMapwidget::sigAdded, this, &ManageMapWidget::sigAdded);
    dialog->open();
}

void ManageMapWidget::edit() {
    const MapRecord* const map = chosen(tr("请选择要编辑的地图!"));
    if (map == nullptr || !isOwn(*map, tr("无编辑地图权限!")))
        return;
    auto* const dialog = new SetElectronMapDialog(context(), *map, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ManageMapWidget::manageMarkers() {
    const MapRecord* const map = chosen(tr("请选择要管理标记的地图!"));
    if (map == nullptr || !isOwn(*map, tr("无操作权限!")))
        return;
    auto* const dialog = new MapIconDeleteDialog(context(), document_, map->id, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ManageMapWidget::share() {
    const MapRecord* const map = chosen(tr("请选择要分享的地图!"));
    if (map == nullptr || !isOwn(*map, tr("无操作权限!")))
        return;
    manage::send(context(), this,
                 {.json = requests::accountRequest(QStringLiteral("获取好友列表")),
                  .busy = share_,
                  .done = [this, map = *map](const QVariantMap& resp) {
                      chooseFriends(map, resp);
                  }});
}

void ManageMapWidget::chooseFriends(const MapRecord& map, const QVariantMap& resp) {
    const auto friends = FriendRecord::listOf(resp.value(QStringLiteral("friendlist")).toList());
    if (friends.isEmpty()) {
        account::tell(tr("还没有好友，请先添加好友!"), this);
        return;
    }
    QList<CheckPicker::Entry> entries;
    for (const FriendRecord& one : friends)
        entries += {one.phone, one.displayName(), one.phone};
    auto* const picker = new CheckPicker(
        tr("设置地图分享"), entries, map.friends,
        [this, map](const QStringList& phones) { submitShare(map, phones); }, this);
    picker->open();
}

void ManageMapWidget::submitShare(const MapRecord& map, const QStringList& phones) {
    manage::send(
        context(), this,
        {.json = requests::accountRequest(QStringLiteral("设置地图分享"), {{QStringLiteral("mapid"), map.id},
                                                                           {QStringLiteral("friendphones"), phones}}),
         .busy = share_,
         .done = [this, map, phones](const QVariantMap&) {
             logChange(context(), QStringLiteral("设置地图分享"),
                       map.name + QLatin1Char(' ') + phones.join(QLatin1Char(',')));
             account::tell(tr("保存成功!"), this);
             emit context().events.sig_updateMapList();
         }});
}

void ManageMapWidget::askToDelete() {
    const MapRecord* const map = chosen(tr("请选择要删除的地图!"));
    if (map == nullptr || !isOwn(*map, tr("无删除地图权限!")))
        return;
    if (isOpen_(map->id)) {
        account::tell(tr("当前地图已经打开,无法删除!"), this);
        return;
    }
    if (!map->markers.isEmpty()) {
        account::tell(tr("请先删除该地图上的所有标记点!"), this);
        return;
    }
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确认要删除该地图吗？"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this, gone = *map] {
                         deleteMap(gone);
                     }});
}

void ManageMapWidget::deleteMap(const MapRecord& map) {
    manage::send(context(), this,
                 {.json = requests::accountRequest(QStringLiteral("删除地图"), {{QStringLiteral("mapid"), map.id}}),
                  .busy = delete_,
                  .done = [this, map](const QVariantMap&) {
                      logChange(context(), QStringLiteral("删除地图"), map.name);
                      account::tell(tr("删除地图成功!"), this);
                      emit context().events.sig_updateMapList();
                  }});
}

} // namespace corvanta::map
