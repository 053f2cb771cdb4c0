#include "app/ClientCallback.h"

#include "base/DataTree.h"
#include "base/JsonText.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "base/TcpSocketManage.h"
#include "storage/RecordingStorage.h"

#include <QDebug>
#include <QDir>

#include <array>
#include <cstdint>

namespace {

struct TypeName {
    const char* name;
    ClientCallback::Kind kind;
};

constexpr std::array Types{
    TypeName{"freshlist", ClientCallback::Kind::FreshList},
    TypeName{"freshlocal", ClientCallback::Kind::FreshLocal},
    TypeName{"freshlisterror", ClientCallback::Kind::FreshListError},
    TypeName{"logout", ClientCallback::Kind::Logout},
    TypeName{"reqalarmpath", ClientCallback::Kind::ReqAlarmPath},
    TypeName{"sensordataupdate", ClientCallback::Kind::SensorDataUpdate},
    TypeName{"trigger", ClientCallback::Kind::Trigger},
    TypeName{"sdkcrash", ClientCallback::Kind::SdkCrash},
    TypeName{"getsocketdelegate", ClientCallback::Kind::GetSocketDelegate},
    TypeName{"servicenotice", ClientCallback::Kind::ServiceNotice},
    TypeName{"sms", ClientCallback::Kind::Sms},
    TypeName{"freshuserinfo", ClientCallback::Kind::FreshUserInfo},
};

QString textAt(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toString();
}

} // namespace

ClientCallback::ClientCallback(const Settings& settings, const RecordingStorage& storage, TaskQueue& queue,
                               ClientEvents& events)
    : settings_(settings)
    , storage_(storage)
    , queue_(queue)
    , events_(events) {}

ClientCallback::Kind ClientCallback::kindOf(const QString& type) {
    for (const TypeName& entry : Types) {
        if (type == QLatin1String(entry.name))
            return entry.kind;
    }
    return Kind::Unknown;
}

void ClientCallback::operator()(const std::string& message, std::string& reply) const {
    const QVariantMap map = corvanta::json::parseObject(message);
    switch (const Kind kind = kindOf(textAt(map, "type"))) {
    case Kind::Unknown:
        return;
    case Kind::FreshListError:
        qDebug().noquote() << "freshlisterror!!!!!!!!freshlisterror!!!!" + QString::fromStdString(message);
        return;
    case Kind::ReqAlarmPath:
        if (settings_.forSdkThreads().acceptsAlarms)
            answerAlarmPath(map, reply);
        return;
    case Kind::GetSocketDelegate:
        answerSocketDelegate(reply);
        return;
    case Kind::Trigger:
        if (settings_.forSdkThreads().acceptsAlarms)
            inGui(kind, message);
        return;
    default:
        inGui(kind, message);
    }
}

void ClientCallback::answerAlarmPath(const QVariantMap& message, std::string& reply) const {
    const QString fileName = textAt(message, "filename");
    const QString kind =
        fileName.contains(QLatin1String(".avi")) ? corvanta::dataTree::LocalRecord : corvanta::dataTree::Image;
    const QString folder = storage_.folderFor(kind, textAt(message, "ipncid"), textAt(message, "date"));
    // The device writes into a folder that is there.
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        qDebug() << "no folder for an alarm file of" << textAt(message, "ipncid");
        return;
    }
    reply = folder.toStdString();
}

void ClientCallback::answerSocketDelegate(std::string& reply) const {
    const SdkThreadSettings& settings = settings_.forSdkThreads();
    if (!settings.proxy)
        return;
    auto connection = std::make_unique<TcpSocketManage>(*settings.proxy, [this](TcpSocketManage* closed) {
        queue_.post([&events = events_, closed] { events.connectionClosed(closed); });
    });
    // Signed, and in the full width of a pointer: the reader turns the text back into the same address.
    const auto* delegate = static_cast<ipncsdk::TCPSocketDelegate*>(connection.get());
    reply = std::to_string(reinterpret_cast<std::intptr_t>(delegate));
    queue_.post([&events = events_, made = connection.release()] { events.connectionMade(made); });
}

void ClientCallback::inGui(Kind kind, const std::string& message) const {
    queue_.post([this, kind, message] { handle(kind, corvanta::json::parseObject(message)); });
}

void ClientCallback::handle(Kind kind, const QVariantMap& message) const {
    switch (kind) {
    case Kind::FreshList:
        events_.listReady();
        break;
    case Kind::FreshLocal:
        events_.localListReady(message.value(QStringLiteral("freshlocal")).toMap());
        break;
    case Kind::Logout:
        events_.signedOut(textAt(message, "reason"));
        break;
    case Kind::SensorDataUpdate:
        events_.sensorValues(textAt(message, "updatetime"),
                             message.value(QStringLiteral("sensordataupdate")).toList());
        break;
    case Kind::Trigger:
        events_.alarm(message);
        break;
    case Kind::SdkCrash:
        events_.sdkCrashed();
        break;
    case Kind::ServiceNotice:
        events_.notice(textAt(message, "text"));
        break;
    case Kind::Sms:
        events_.textMessage(message);
        break;
    case Kind::FreshUserInfo:
        events_.userInfoChanged();
        break;
    default: // answered where it arrived
        break;
    }
}
