#include "map/ui/MapSession.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/Language.h"
#include "base/RequestBuilder.h"
#include "base/ui/TipDialog.h"
#include "linkage/Boards.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/ui/MapMangerMarkDialog.h"
#include "map/ui/MapMarkDataTabelDialog.h"
#include "map/ui/MapMarkVideoDiolag.h"
#include "map/ui/MapSend.h"
#include "map/ui/ReferencePointDialog.h"

#include <QMenu>

#include <algorithm>
#include <utility>

namespace corvanta::map {
namespace {

bool sameIds(const QList<MapMarker>& one, const QList<MapMarker>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const MapMarker& a, const MapMarker& b) { return a.id == b.id; });
}

/// What the service keeps of them is the same, and where the icon is.
bool isSame(const MapMarker& one, const MapMarker& other) {
    return one.iconPath == other.iconPath && one.toMap() == other.toMap();
}

QString protocolOf(const DeviceRecord& device, const QString& boardPid) {
    const auto find = [&boardPid](const QVariantList& boards) {
        for (const QVariant& board : boards) {
            const QVariantMap map = board.toMap();
            if (map.value(QStringLiteral("pid")).toString() == boardPid)
                return map.value(QStringLiteral("protocol")).toString();
        }
        return QString();
    };
    const QString protocol = find(device.interfaces);
    return protocol.isEmpty() ? find(device.subDevices()) : protocol;
}

} // namespace

MapSession::MapSession(const AppContext& context, MapDocument& document, QString mapId, MapView& view)
    : QObject(&view)
    , context_(context)
    , document_(document)
    , mapId_(std::move(mapId))
    , view_(view)
    , index_(context.devices) {
    beat_.setSingleShot(true);
    beat_.setInterval(ValueBeat);
    connect(&beat_, &QTimer::timeout, this, &MapSession::tellPending);
    connect(&document_, &MapDocument::sigMapsChanged, this, &MapSession::refresh);
    connect(&context_.events, &AppEvents::sig_updateSensorList, this, [this] {
        index_ = SensorIndex(context_.devices);
        fillTables();
        for (int i = 0; i < shown_.size(); ++i)
            tellText(i);
    });
    connectView();
    connect(&LanguageNotice::instance(), &LanguageNotice::changed, this, [this] {
        for (int i = 0; i < shown_.size(); ++i)
            tellText(i);
    });
    const MapRecord* const map = document_.map(mapId_);
    view_.setEditable(map != nullptr && !map->shared);
    shown_ = map == nullptr ? QList<MapMarker>() : map->markers;
    tellAll();
}

void MapSession::connectView() {
    connect(&view_, &MapView::sigDropped, this, &MapSession::drop);
    connect(&view_, &MapView::sigMarkerMoved, this, &MapSession::move);
    connect(&view_, &MapView::sigMarkerActivated, this, &MapSession::activate);
    connect(&view_, &MapView::sigMarkerMenu, this, &MapSession::menu);
    connect(&view_, &MapView::sigDeleteMarker, this, &MapSession::askToDelete);
    connect(&view_, &MapView::sigEditMarker, this, &MapSession::edit);
    connect(&view_, &MapView::sigClearAlarm, this, &MapSession::clearAlarm);
}

const MapMarker* MapSession::marker(int index) const {
    return index >= 0 && index < shown_.size() ? &shown_[index] : nullptr;
}

std::optional<int> MapSession::alarmOf(int index) const {
    const MapMarker* const one = marker(index);
    const auto level = one == nullptr ? alarms_.constEnd() : alarms_.constFind(one->id);
    return level == alarms_.constEnd() ? std::nullopt : std::optional(*level);
}

void MapSession::refresh() {
    const MapRecord* const map = document_.map(mapId_);
    if (map == nullptr) {
        emit sigGone();
        return;
    }
    view_.setEditable(!map->shared);
    QList<MapMarker> wanted = map->markers;
    for (MapMarker& one : wanted) { // where a move leads that is not answered yet
        const auto shown =
            std::find_if(shown_.begin(), shown_.end(), [&one](const MapMarker& other) { return other.id == one.id; });
        if (!moving_.contains(one.id) || shown == shown_.end())
            continue;
        one.x = shown->x;
        one.y = shown->y;
        one.lat = shown->lat;
        one.lng = shown->lng;
    }
    if (refreshPart(wanted))
        return;
    shown_ = wanted;
    tellAll();
}

bool MapSession::refreshPart(const QList<MapMarker>& wanted) {
    QSet<QString> left;
    for (const MapMarker& one : wanted)
        left.insert(one.id);
    QList<MapMarker> rest = shown_;
    rest.erase(
        std::remove_if(rest.begin(), rest.end(), [&left](const MapMarker& one) { return !left.contains(one.id); }),
        rest.end());
    if (!sameIds(rest, wanted))
        return false;
    for (int i = shown_.size() - 1; i >= 0; --i) {
        if (left.contains(shown_[i].id))
            continue;
        alarms_.remove(shown_[i].id);
        view_.removeMarker(i);
    }
    shown_ = wanted;
    pending_.clear(); // indices have changed; every text is told anew where it has
    fillTables();
    for (int i = 0; i < wanted.size(); ++i) {
        if (isSame(rest[i], wanted[i]))
            continue;
        view_.moveMarker(i, wanted[i]);
        tellText(i);
    }
    return true;
}

void MapSession::tellAll() {
    view_.setMarkers(shown_);
    fillTables();
    QHash<QString, int> alarms;
    for (int i = 0; i < shown_.size(); ++i) {
        tellText(i);
        const auto level = alarms_.constFind(shown_[i].id);
        if (level == alarms_.constEnd())
            continue;
        alarms.insert(level.key(), *level);
        view_.showAlarm(i, *level);
    }
    alarms_ = alarms;
    pending_.clear();
}

void MapSession::fillTables() {
    followers_.clear();
    for (int i = 0; i < shown_.size(); ++i) {
        if (!shown_[i].isUpdate)
            continue;
        const auto inputs = index_.shownInputs(shown_[i]);
        for (const sensor::InputRecord& input : inputs)
            followers_.insert(input.pid, i);
    }
}

void MapSession::tellText(int index) {
    QStringList lines = index_.labelLines(shown_[index], context_.inputFields);
    if (context_.devices.device(shown_[index].ipncId) == nullptr && !context_.devices.isEmpty())
        lines += tr("设备不存在");
    view_.setMarkerText(index, lines);
}

void MapSession::tellPending() {
    const QSet<int> changed = std::exchange(pending_, {});
    for (const int index : changed) {
        if (marker(index) != nullptr)
            tellText(index);
    }
}

void MapSession::UpdateSensorInputData(const QString&, const QVariantList& datalist) {
    for (const QVariant& entry : datalist) {
        const int pid = entry.toMap().value(QStringLiteral("pid")).toInt();
        for (auto it = followers_.constFind(pid); it != followers_.constEnd() && it.key() == pid; ++it)
            pending_.insert(*it);
    }
    if (!pending_.isEmpty() && !beat_.isActive())
        beat_.start();
}

void MapSession::OntriggerAlarm(const QVariantMap& triggerMap) {
    const int level = triggerMap.value(QStringLiteral("threshold")).toInt();
    const QList<int> concerned = index_.markersOf(triggerMap, shown_);
    for (const int index : concerned) {
        alarms_.insert(shown_[index].id, level);
        view_.showAlarm(index, level);
    }
}

bool MapSession::showAlarmPlace(const QString& ipncId, const QVariantMap& trigger) {
    QList<int> concerned = index_.markersOf(trigger, shown_);
    for (int i = 0; i < shown_.size() && concerned.isEmpty(); ++i) {
        if (shown_[i].ipncId == ipncId)
            concerned += i;
    }
    if (concerned.isEmpty())
        return false;
    view_.showMarker(concerned.constFirst());
    return true;
}

bool MapSession::mayChange() {
    const MapRecord* const map = document_.map(mapId_);
    if (map != nullptr && !map->shared)
        return true;
    account::tell(tr("无操作权限!"), &view_);
    return false;
}

void MapSession::drop(const QString& ipncId, const QString& sensorPid, const MapMarker& place) {
    const DeviceRecord* const device = context_.devices.device(ipncId);
    const MapRecord* const map = document_.map(mapId_);
    if (device == nullptr || map == nullptr || !mayChange())
        return;
    MapMarker placed = place;
    placed.ipncId = ipncId;
    placed.pid = sensorPid;
    placed.name = device->displayName();
    if (!sensorPid.isEmpty()) {
        const linkage::Boards boards = linkage::Boards::of(*device);
        const linkage::Board* const board = boards.board(sensorPid.toInt());
        if (board == nullptr)
            return;
        placed.name = board->name;
        placed.protocol = protocolOf(*device, sensorPid);
    }
    constexpr int longestName = 200; // characters; what the service takes
    placed.name = placed.name.left(longestName);
    if (placed.name.trimmed().isEmpty())
        placed.name = ipncId;
    constexpr int mostAtFirst = 6; // values that leave something of the map
    const int values = index_.inputsOf(placed).size();
    placed.showDatas = values > 0 && values <= mostAtFirst;
    manage::send(context_, &view_,
                 {.json = requests::accountRequest(QStringLiteral("提交地图传感器"), markerParameters(*map, placed)),
                  .done = [this, placed](const QVariantMap& resp) mutable {
                      placed.id = resp.value(QStringLiteral("mapsensorid")).toString();
                      logChange(context_, QStringLiteral("添加标记"), placed.name);
                      document_.putMarker(mapId_, placed);
                  }});
}

void MapSession::move(int index, const MapMarker& place) {
    const MapMarker* const before = marker(index);
    const MapRecord* const map = document_.map(mapId_);
    if (before == nullptr || map == nullptr)
        return;
    if (!mayChange()) {
        view_.moveMarker(index, *before);
        return;
    }
    const QString id = before->id;
    MapMarker moved = *before;
    moved.x = place.x;
    moved.y = place.y;
    moved.lat = place.lat;
    moved.lng = place.lng;
    shown_[index] = moved;
    view_.moveMarker(index, moved);
    const int number = ++moves_;
    moving_.insert(id, number);
    // Of several moves the last one's answer counts; a refusal leads back to what the service has.
    const auto isLast = [this, id, number] {
        if (moving_.value(id) != number)
            return false;
        moving_.remove(id);
        return true;
    };
    const bool isSent = manage::send(
        context_, &view_,
        {.json = requests::accountRequest(QStringLiteral("提交地图传感器"), markerParameters(*map, moved)),
         .done =
             [this, moved, isLast](const QVariantMap&) {
                 isLast();
                 logChange(context_, QStringLiteral("移动标记"), moved.name);
                 document_.putMarker(mapId_, moved);
             },
         .failed =
             [this, isLast](const QString&) {
                 account::tell(tr("移动失败!"), &view_);
                 if (isLast())
                     refresh();
             }});
    if (!isSent && isLast())
        refresh();
}

void MapSession::activate(int index) {
    const MapMarker* const one = marker(index);
    if (one == nullptr)
        return;
    if (context_.devices.device(one->ipncId) == nullptr) {
        account::tell(tr("设备不存在!"), &view_);
        return;
    }
    QDialog* const dialog = one->isCamera() ? static_cast<QDialog*>(new MapMarkVideoDiolag(context_, *one, &view_))
                                            : new MapMarkDataTabelDialog(context_, *one, &view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void MapSession::menu(int index, const QPoint& place) {
    const MapMarker* const one = marker(index);
    if (one == nullptr)
        return;
    const QString id = one->id;
    // The markers may be others when the choice is made.
    const auto chosen = [this, id](void (MapSession::*act)(int)) {
        return [this, id, act] {
            for (int i = 0; i < shown_.size(); ++i) {
                if (shown_[i].id == id)
                    return (this->*act)(i);
            }
        };
    };
    auto* const menu = new QMenu(&view_);
    menu->setObjectName(QStringLiteral("markerMenu"));
    menu->setAccessibleName(tr("标记菜单"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu, this](const char* name, const QString& text, auto&& act) {
        QAction* const action = menu->addAction(text, this, std::forward<decltype(act)>(act));
        action->setObjectName(QLatin1String(name));
        return action;
    };
    add("markerEdit", tr("设置标记参数"), chosen(&MapSession::edit));
    add("markerDrag", tr("拖动标记"), [this, id] {
        for (int i = 0; i < shown_.size(); ++i) {
            if (shown_[i].id == id && mayChange())
                return view_.beginDrag(i);
        }
    });
    add("markerDelete", tr("删除标记"), chosen(&MapSession::askToDelete));
    add("markerClearAlarm", tr("清除报警"), chosen(&MapSession::clearAlarm))->setEnabled(alarms_.contains(id));
    if (one->isPositioning())
        add("markerReferences", tr("设置参考点坐标"), chosen(&MapSession::editReferences));
    menu->popup(place);
}

void MapSession::edit(int index) {
    const MapMarker* const one = marker(index);
    const MapRecord* const map = document_.map(mapId_);
    if (one == nullptr || map == nullptr || !mayChange())
        return;
    auto* const dialog = new MapMangerMarkDialog(context_, document_, *map, *one, &view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void MapSession::askToDelete(int index) {
    const MapMarker* const one = marker(index);
    if (one == nullptr || !mayChange())
        return;
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确定删除标记?"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     &view_, {.accepted = [this, gone = *one] {
                         manage::send(context_, &view_,
                                      {.json = requests::accountRequest(QStringLiteral("删除地图传感器"),
                                                                        deletionParameters(mapId_, gone)),
                                       .done = [this, gone](const QVariantMap&) {
                                           logChange(context_, QStringLiteral("删除标记"), gone.name);
                                           account::tell(tr("删除成功!"), &view_);
                                           document_.removeMarker(mapId_, gone.id);
                                       }});
                     }});
}

void MapSession::clearAlarm(int index) {
    if (const MapMarker* const one = marker(index)) {
        alarms_.remove(one->id);
        view_.clearAlarm(index);
    }
}

void MapSession::editReferences(int index) {
    const MapMarker* const one = marker(index);
    if (one == nullptr || !mayChange())
        return;
    auto* const dialog = new ReferencePointDialog(context_, document_, mapId_, *one, &view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace corvanta::map
