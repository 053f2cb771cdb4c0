#include "e2e/Accessible.h"

#include "e2e/Desktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <utility>

namespace {

constexpr const char* Element = "org.a11y.atspi.Accessible";
constexpr const char* Component = "org.a11y.atspi.Component";
constexpr const char* Text = "org.a11y.atspi.Text";
constexpr const char* Value = "org.a11y.atspi.Value";
constexpr uint OnScreen = 0;

/// The answer's first value; invalid when the thing is gone or cannot tell.
QVariant answer(QDBusPendingCall call) {
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QVariant propertyAnswer(const QDBusPendingCall& call) {
    return answer(call).value<QDBusVariant>().variant();
}

QRect rectAnswer(const QDBusPendingCall& call) {
    const QVariant said = answer(call);
    if (!said.canConvert<QDBusArgument>())
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto argument = said.value<QDBusArgument>();
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

bool stateAnswer(const QDBusPendingCall& call, Accessible::State state) {
    const QVariant said = answer(call);
    if (!said.canConvert<QDBusArgument>())
        return false;
    QVector<uint> words;
    const auto argument = said.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        uint word = 0;
        argument >> word;
        words += word;
    }
    argument.endArray();
    const auto bit = static_cast<unsigned>(state);
    return ((words.value(static_cast<int>(bit / 32)) >> (bit % 32)) & 1U) != 0;
}

/// Whether it holds rows without end that are not worth a look while something else is sought.
bool hasRows(Accessible::Role role) {
    return role == Accessible::Role::Tree || role == Accessible::Role::Table || role == Accessible::Role::List;
}

} // namespace

Accessible::Accessible(const QDBusConnection& bus, QString service, QString path)
    : bus_(bus)
    , service_(std::move(service))
    , path_(std::move(path)) {}

QDBusPendingCall Accessible::call(const char* interface, const char* method, const QVariantList& arguments) const {
    if (isNull())
        return QDBusPendingCall::fromError(QDBusError(QDBusError::UnknownObject, QStringLiteral("nothing")));
    QDBusMessage message =
        QDBusMessage::createMethodCall(service_, path_, QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    return bus_->asyncCall(message, Desktop::Patience);
}

QDBusPendingCall Accessible::property(const char* interface, const char* name) const {
    return call("org.freedesktop.DBus.Properties", "Get", {QLatin1String(interface), QLatin1String(name)});
}

QString Accessible::name() const {
    return propertyAnswer(property(Element, "Name")).toString();
}

QString Accessible::description() const {
    return propertyAnswer(property(Element, "Description")).toString();
}

Accessible::Role Accessible::role() const {
    return static_cast<Role>(answer(call(Element, "GetRole")).toUInt());
}

bool Accessible::has(State state) const {
    return stateAnswer(call(Element, "GetState"), state);
}

QRect Accessible::place() const {
    return rectAnswer(call(Component, "GetExtents", {OnScreen}));
}

QString Accessible::text() const {
    return answer(call(Text, "GetText", {0, -1})).toString();
}

std::optional<double> Accessible::number() const {
    const QVariant value = propertyAnswer(property(Value, "CurrentValue"));
    return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
}

QVector<Accessible::Seen> Accessible::children() const {
    return readChildren(call(Element, "GetChildren"));
}

QVector<Accessible::Seen> Accessible::readChildren(const QDBusPendingCall& asked) const {
    const QVariant said = answer(asked);
    QVector<Seen> result;
    if (!said.canConvert<QDBusArgument>())
        return result;
    const auto argument = said.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        result.append({Accessible(*bus_, service, path.path()), QString(), Role::Invalid});
    }
    argument.endArray();
    QVector<QDBusPendingCall> names;
    QVector<QDBusPendingCall> roles;
    for (const Seen& child : qAsConst(result)) {
        names += child.thing.property(Element, "Name");
        roles += child.thing.call(Element, "GetRole");
    }
    for (int i = 0; i < result.size(); ++i) {
        result[i].name = propertyAnswer(names[i]).toString();
        result[i].role = static_cast<Role>(answer(roles[i]).toUInt());
    }
    return result;
}

Accessible Accessible::find(const Test& test) const {
    QVector<Accessible> level{*this};
    while (!level.isEmpty()) {
        QVector<QDBusPendingCall> asked;
        for (const Accessible& parent : qAsConst(level))
            asked += parent.call(Element, "GetChildren");
        QVector<Accessible> next;
        for (int i = 0; i < level.size(); ++i) {
            for (const Seen& child : level[i].readChildren(asked[i])) {
                if (test(child))
                    return child.thing;
                if (!hasRows(child.role))
                    next += child.thing;
            }
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
    QVector<QDBusPendingCall> asked;
    for (const Accessible& thing : things)
        asked += thing.call(Element, "GetState");
    QVector<bool> result;
    for (const QDBusPendingCall& call : qAsConst(asked))
        result += stateAnswer(call, state);
    return result;
}

QVector<QRect> Accessible::places(const QVector<Accessible>& things) {
    QVector<QDBusPendingCall> asked;
    for (const Accessible& thing : things)
        asked += thing.call(Component, "GetExtents", {OnScreen});
    QVector<QRect> result;
    for (const QDBusPendingCall& call : qAsConst(asked))
        result += rectAnswer(call);
    return result;
}

QVector<QString> Accessible::descriptions(const QVector<Accessible>& things) {
    QVector<QDBusPendingCall> asked;
    for (const Accessible& thing : things)
        asked += thing.property(Element, "Description");
    QVector<QString> result;
    for (const QDBusPendingCall& call : qAsConst(asked))
        result += propertyAnswer(call).toString();
    return result;
}
