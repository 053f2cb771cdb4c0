#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

struct DeviceRecord;

/// The inputs and outputs of a device, as plans name them.
namespace corvanta::linkage {

/// Which ports of a board are meant.
enum class PortKind { Input, Output };

struct Port {
    int pid = 0;
    QString name;
};

/// An interface or a sub-device.
struct Board {
    int pid = 0;
    QString name; ///< never empty: the name of its interface, or its number, where it has none
    QList<Port> inputs;
    QList<Port> outputs;

    const QList<Port>& ports(PortKind kind) const { return kind == PortKind::Input ? inputs : outputs; }
};

/// An input or output that a plan names. `name` is what sensor and port were called when it was chosen. What this
/// program does not know of an entry is kept.
struct PortRef {
    int ifpid = 0;
    int pid = 0;
    QString name;
    QVariantMap rest;

    static PortRef fromMap(const QVariantMap& map, PortKind kind);
    QVariantMap toMap(PortKind kind) const;
};

/// The boards of a device: its interfaces, then its sub-devices, in the order of the lists.
class Boards final {
public:
    Boards() = default;
    static Boards of(const DeviceRecord& device);

    const QList<Board>& all() const { return all_; }
    /// Null when there is no such board.
    const Board* board(int ifpid) const;
    bool has(const PortRef& ref, PortKind kind) const { return port(ref, kind) != nullptr; }
    /// Name of the sensor and of the port as they are now, parted by a comma; of one that is gone what it was called,
    /// marked as deleted.
    QString name(const PortRef& ref, PortKind kind) const;
    /// As lists of conditions and actions show one: "%1,%2; ".
    QString text(const PortRef& ref, PortKind kind) const { return name(ref, kind) + QStringLiteral("; "); }

private:
    const Port* port(const PortRef& ref, PortKind kind) const;

    QList<Board> all_;
};

/// `name` with the mark of what is not there any more.
QString deletedText(const QString& name);

} // namespace corvanta::linkage
