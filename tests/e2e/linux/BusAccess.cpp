#include "e2e/linux/BusAccess.h"

#include "e2e/Desktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QRect>

namespace {

constexpr const char* Element = "org.a11y.atspi.Accessible";
constexpr const char* Component = "org.a11y.atspi.Component";
constexpr const char* Text = "org.a11y.atspi.Text";
constexpr const char* Value = "org.a11y.atspi.Value";
constexpr uint OnScreen = 0;
constexpr QChar Separator = QLatin1Char(' '); // is in no name on a bus

struct Question {
    const char* interface;
    const char* method;
    QVariantList arguments;
};

Question property(const char* interface, const char* name) {
    return {"org.freedesktop.DBus.Properties", "Get", {QLatin1String(interface), QLatin1String(name)}};
}

Question question(AccessSource::What what) {
    switch (what) {
    case AccessSource::What::Name:
        return property(Element, "Name");
    case AccessSource::What::Description:
        return property(Element, "Description");
    case AccessSource::What::Role:
        return {Element, "GetRole", {}};
    case AccessSource::What::States:
        return {Element, "GetState", {}};
    case AccessSource::What::Place:
        return {Component, "GetExtents", {OnScreen}};
    case AccessSource::What::Text:
        return {Text, "GetText", {0, -1}};
    case AccessSource::What::Number:
        return property(Value, "CurrentValue");
    case AccessSource::What::Children:
        return {Element, "GetChildren", {}};
    }
    return {};
}

QVariant rect(const QDBusArgument& argument) {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return QRect(x, y, width, height);
}

QVariant states(const QDBusArgument& argument) {
    qulonglong result = 0;
    argument.beginArray();
    for (unsigned shift = 0; !argument.atEnd(); shift += 32) {
        uint word = 0;
        argument >> word;
        result |= shift < 64 ? static_cast<qulonglong>(word) << shift : 0;
    }
    argument.endArray();
    return result;
}

QVariant children(const QDBusArgument& argument) {
    QStringList result;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        result += BusAccess::id(service, path.path());
    }
    argument.endArray();
    return result;
}

/// What the answer's first value says.
QVariant read(AccessSource::What what, const QVariant& said) {
    if (said.canConvert<QDBusVariant>())
        return said.value<QDBusVariant>().variant();
    if (!said.canConvert<QDBusArgument>())
        return said;
    const auto argument = said.value<QDBusArgument>();
    switch (what) {
    case AccessSource::What::Place:
        return rect(argument);
    case AccessSource::What::States:
        return states(argument);
    case AccessSource::What::Children:
        return children(argument);
    default:
        return {};
    }
}

} // namespace

QString BusAccess::id(const QString& service, const QString& path) {
    return service + Separator + path;
}

QDBusPendingCall BusAccess::begin(What what, const QString& thing) const {
    const QStringList place = thing.split(Separator);
    if (place.size() != 2)
        return QDBusPendingCall::fromError(QDBusError(QDBusError::UnknownObject, QStringLiteral("nothing")));
    const Question asked = question(what);
    QDBusMessage message = QDBusMessage::createMethodCall(place[0], place[1], QLatin1String(asked.interface),
                                                          QLatin1String(asked.method));
    message.setArguments(asked.arguments);
    return bus_.asyncCall(message, Desktop::Patience);
}

QVector<QVariant> BusAccess::ask(What what, const QStringList& things) {
    QVector<QDBusPendingCall> asked;
    for (const QString& thing : things)
        asked += begin(what, thing);
    QVector<QVariant> result;
    for (QDBusPendingCall& call : asked) {
        call.waitForFinished();
        const QDBusMessage reply = call.reply();
        result += reply.type() == QDBusMessage::ReplyMessage ? read(what, reply.arguments().value(0)) : QVariant();
    }
    return result;
}
