#include "e2e/linux/AccessRegistry.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>

namespace {

const QString Root = QStringLiteral("/org/a11y/atspi/accessible/root");

/// A service and a path, or a service and what it wants to hear.
struct Reference {
    QString service;
    QDBusObjectPath path;
};
struct Listener {
    QString service;
    QString event;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference) {
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference) {
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const Listener& listener) {
    argument.beginStructure();
    argument << listener.service << listener.event;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Listener& listener) {
    argument.beginStructure();
    argument >> listener.service >> listener.event;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(Reference)
Q_DECLARE_METATYPE(Listener)

AccessRegistry::AccessRegistry() {
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<Listener>();
    qDBusRegisterMetaType<QList<Listener>>();
}

AccessRegistry::~AccessRegistry() {
    // Whatever the registry's thread did last, it did before this.
    const std::lock_guard lock(mutex_);
}

std::optional<BusPlace> AccessRegistry::program(qint64 process) const {
    const std::lock_guard lock(mutex_);
    const auto it = programs_.find(process);
    return it == programs_.end() ? std::nullopt : std::optional(*it);
}

std::vector<BusPlace> AccessRegistry::shown() const {
    const std::lock_guard lock(mutex_);
    return shown_;
}

QString AccessRegistry::introspect(const QString& /*path*/) const {
    return {};
}

bool AccessRegistry::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const QString member = message.member();
    QVariant reply;
    if (member == QStringLiteral("Embed")) {
        enter(message, connection);
        reply = QVariant::fromValue(Reference{Name, QDBusObjectPath(Root)});
    } else if (member == QStringLiteral("GetRegisteredEvents")) {
        reply =
            QVariant::fromValue(QList<Listener>{{connection.baseService(), QStringLiteral("Object:StateChanged")}});
    } else if (member.startsWith(QStringLiteral("NotifyListeners"))) {
        reply = false; // the key is not taken
    } else {
        return false;
    }
    return connection.send(message.createReply(reply));
}

void AccessRegistry::enter(const QDBusMessage& message, const QDBusConnection& connection) {
    const auto root = qdbus_cast<Reference>(message.arguments().value(0));
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    question.setArguments({message.service()});
    const QDBusReply<uint> process = connection.call(question);
    const std::lock_guard lock(mutex_);
    if (process.isValid())
        programs_.insert(process.value(), {message.service().toStdString(), root.path.path().toStdString()});
}

void AccessRegistry::onStateChanged(const QDBusMessage& message) {
    if (message.arguments().value(0).toString() != QStringLiteral("showing"))
        return;
    const BusPlace thing{message.service().toStdString(), message.path().toStdString()};
    const std::lock_guard lock(mutex_);
    std::erase(shown_, thing);
    if (message.arguments().value(1).toInt() != 0)
        shown_.push_back(thing);
}
