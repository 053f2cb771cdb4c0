#include "linkage/Boards.h"

#include "base/DeviceModel.h"

#include <QCoreApplication>

namespace corvanta::linkage {
namespace {

const QString IfPid = QStringLiteral("ifpid");
const QString Name = QStringLiteral("name");

QString portKey(PortKind kind) {
    return kind == PortKind::Input ? QStringLiteral("input") : QStringLiteral("output");
}

QList<Port> portsOf(const QVariantList& entries) {
    QList<Port> result;
    for (const QVariant& entry : entries) {
        const QVariantMap map = entry.toMap();
        Port port{map.value(QStringLiteral("pid")).toInt(), map.value(Name).toString()};
        if (port.pid == 0)
            continue;
        if (port.name.isEmpty())
            port.name = QString::number(port.pid);
        result += port;
    }
    return result;
}

void append(QList<Board>& boards, const QVariantList& entries) {
    for (const QVariant& entry : entries) {
        const QVariantMap map = entry.toMap();
        Board board;
        const QVariant number =
            map.contains(QStringLiteral("pid")) ? map.value(QStringLiteral("pid")) : map.value(IfPid);
        board.pid = number.toInt();
        for (const QString& key : {Name, QStringLiteral("ifname")}) {
            if (board.name.isEmpty())
                board.name = map.value(key).toString();
        }
        if (board.name.isEmpty())
            board.name = QString::number(board.pid);
        board.inputs = portsOf(map.value(portKey(PortKind::Input)).toList());
        board.outputs = portsOf(map.value(portKey(PortKind::Output)).toList());
        if (board.pid != 0)
            boards += board;
    }
}

} // namespace

PortRef PortRef::fromMap(const QVariantMap& map, PortKind kind) {
    PortRef ref;
    ref.rest = map;
    ref.ifpid = ref.rest.take(IfPid).toInt();
    ref.pid = ref.rest.take(portKey(kind)).toInt();
    ref.name = ref.rest.take(Name).toString();
    return ref;
}

QVariantMap PortRef::toMap(PortKind kind) const {
    QVariantMap map = rest;
    map.insert(IfPid, ifpid);
    map.insert(portKey(kind), pid);
    map.insert(Name, name);
    return map;
}

Boards Boards::of(const DeviceRecord& device) {
    Boards boards;
    append(boards.all_, device.interfaces);
    // Two forms are in use: the list of sub-devices below "extend", and beside it.
    const QString key = QStringLiteral("sublist");
    const QVariantList below = device.record.value(QStringLiteral("extend")).toMap().value(key).toList();
    append(boards.all_, below.isEmpty() ? device.record.value(key).toList() : below);
    return boards;
}

const Board* Boards::board(int ifpid) const {
    for (const Board& one : all_) {
        if (one.pid == ifpid)
            return &one;
    }
    return nullptr;
}

const Port* Boards::port(const PortRef& ref, PortKind kind) const {
    const Board* const owner = board(ref.ifpid);
    if (owner == nullptr)
        return nullptr;
    for (const Port& one : owner->ports(kind)) {
        if (one.pid == ref.pid)
            return &one;
    }
    return nullptr;
}

QString Boards::name(const PortRef& ref, PortKind kind) const {
    const QString pattern = QStringLiteral("%1,%2");
    if (const Port* const one = port(ref, kind))
        return pattern.arg(board(ref.ifpid)->name, one->name);
    return deletedText(ref.name.isEmpty() ? pattern.arg(ref.ifpid).arg(ref.pid) : ref.name);
}

QString deletedText(const QString& name) {
    return name + QCoreApplication::translate("LinkageBoards", "(已删除)");
}

} // namespace corvanta::linkage
