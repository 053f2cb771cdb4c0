#pragma once

#include "e2e/AccessSource.h"

#include <QRect>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>
#include <utility>

/// One thing that a program shows (a window, a button, a row), as a screen reader has it.
///
/// A handle, cheap to copy. What it stands for may be gone, as a dialog that was closed: then it has no name, no
/// place and no state. Every question is a round trip to the program's GUI thread; those about many are asked at
/// once.
class Accessible final {
public:
    /// Numbers of the accessibility protocol.
    enum class Role : uint {
        Invalid = 0,
        CheckBox = 7,
        ComboBox = 11,
        Dialog = 16,
        Label = 29,
        List = 31,
        ListItem = 32,
        MenuItem = 35,
        PopupMenu = 41,
        Table = 55,
        Cell = 56, ///< a row of a tree, too
        Text = 61,
        Tree = 65,
    };
    /// Likewise; the number of the bit.
    enum class State {
        Active = 1,
        Checked = 4,
        Enabled = 8,
        Expanded = 10,
        Focused = 12,
        Showing = 25,
        Visible = 30,
    };
    /// A thing with what was asked along with it.
    struct Seen;
    using Test = std::function<bool(const Seen&)>;

    Accessible() = default;
    /// The source must outlive it.
    Accessible(AccessSource& source, QString id)
        : source_(&source)
        , id_(std::move(id)) {}

    bool isNull() const { return id_.isEmpty(); }
    bool operator==(const Accessible& other) const { return id_ == other.id_; }

    QString name() const;
    QString description() const;
    Role role() const;
    bool has(State state) const;
    /// Where it stands on the screen, px; empty when it is gone.
    QRect place() const;
    /// What is written in a field for text.
    QString text() const;
    /// The number in a field for numbers.
    std::optional<double> number() const;

    /// What lies directly in it, in its order, whether it is shown or not.
    QVector<Seen> children() const;
    /// The first thing in it, level by level, that passes the test. Rows of trees, tables and lists are not looked
    /// through: there are many, and they are asked for by `children` of the tree.
    Accessible find(const Test& test) const;
    Accessible find(Role role, const QString& name) const;
    Accessible find(const QString& name) const;

    /// States, places and descriptions of many, in their order.
    static QVector<bool> have(const QVector<Accessible>& things, State state);
    static QVector<QRect> places(const QVector<Accessible>& things);
    static QVector<QString> descriptions(const QVector<Accessible>& things);

private:
    QVariant ask(AccessSource::What what) const;
    static QVector<QVariant> ask(AccessSource::What what, const QVector<Accessible>& things);
    static QVector<Seen> childrenOf(const QVector<Accessible>& parents);

    AccessSource* source_ = nullptr;
    QString id_;
};

struct Accessible::Seen {
    Accessible thing;
    QString name;
    Role role = Role::Invalid;
};
