#include "e2e/Accessible.h"

using What = AccessSource::What;

namespace {

/// Whether it holds rows without end that are not worth a look while something else is sought.
bool hasRows(Accessible::Role role) {
    return role == Accessible::Role::Tree || role == Accessible::Role::Table || role == Accessible::Role::List;
}

bool isSet(const QVariant& states, Accessible::State state) {
    return (states.toULongLong() >> static_cast<unsigned>(state) & 1U) != 0;
}

} // namespace

QVariant Accessible::ask(What what) const {
    return isNull() ? QVariant() : source_->ask(what, {id_}).value(0);
}

QVector<QVariant> Accessible::ask(What what, const QVector<Accessible>& things) {
    QStringList ids;
    AccessSource* source = nullptr;
    for (const Accessible& thing : things) {
        ids += thing.id_;
        source = thing.source_ != nullptr ? thing.source_ : source;
    }
    return source == nullptr ? QVector<QVariant>(things.size()) : source->ask(what, ids);
}

QString Accessible::name() const {
    return ask(What::Name).toString();
}

QString Accessible::description() const {
    return ask(What::Description).toString();
}

Accessible::Role Accessible::role() const {
    return static_cast<Role>(ask(What::Role).toUInt());
}

bool Accessible::has(State state) const {
    return isSet(ask(What::States), state);
}

QRect Accessible::place() const {
    return ask(What::Place).toRect();
}

QString Accessible::text() const {
    return ask(What::Text).toString();
}

std::optional<double> Accessible::number() const {
    const QVariant value = ask(What::Number);
    return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
}

QVector<Accessible::Seen> Accessible::children() const {
    return childrenOf({*this});
}

QVector<Accessible::Seen> Accessible::childrenOf(const QVector<Accessible>& parents) {
    const QVector<QVariant> answers = ask(What::Children, parents);
    QVector<Accessible> things;
    for (int i = 0; i < parents.size(); ++i) {
        for (const QString& id : answers.value(i).toStringList())
            things += Accessible(*parents[i].source_, id);
    }
    const QVector<QVariant> names = ask(What::Name, things);
    const QVector<QVariant> roles = ask(What::Role, things);
    QVector<Seen> result;
    for (int i = 0; i < things.size(); ++i)
        result.append({things[i], names.value(i).toString(), static_cast<Role>(roles.value(i).toUInt())});
    return result;
}

Accessible Accessible::find(const Test& test) const {
    QVector<Accessible> level{*this};
    while (!level.isEmpty()) {
        QVector<Accessible> next;
        for (const Seen& child : childrenOf(level)) {
            if (test(child))
                return child.thing;
            if (!hasRows(child.role))
                next += child.thing;
        }
        level = next;
    }
    return {};
}

Accessible Accessible::find(Role role, const QString& name) const {
    return find([&](const Seen& seen) { return seen.role == role && seen.name == name; });
}

Accessible Accessible::find(const QString& name) const {
    return find([&](const Seen& seen) { return seen.name == name; });
}

QVector<bool> Accessible::have(const QVector<Accessible>& things, State state) {
    QVector<bool> result;
    for (const QVariant& states : ask(What::States, things))
        result += isSet(states, state);
    return result;
}

QVector<QRect> Accessible::places(const QVector<Accessible>& things) {
    QVector<QRect> result;
    for (const QVariant& place : ask(What::Place, things))
        result += place.toRect();
    return result;
}

QVector<QString> Accessible::descriptions(const QVector<Accessible>& things) {
    QVector<QString> result;
    for (const QVariant& description : ask(What::Description, things))
        result += description.toString();
    return result;
}
