// What the SDK tells the client unasked, and what a video request's callback brings.

#include "Fuzz.h"
#include "app/ClientCallback.h"
#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "base/TcpSocketManage.h"
#include "linkage/AlarmMessage.h"
#include "storage/RecordingStorage.h"
#include "video/AvMessage.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace corvanta;

namespace {

class Events final : public ClientEvents {
public:
    void listReady() override {}
    void localListReady(const QVariantMap& devices) override { DeviceModel::fromDocument(devices); }
    void signedOut(const QString&) override {}
    void sensorValues(const QString&, const QVariantList&) override {}
    void alarm(const QVariantMap& message) override { linkage::AlarmMessage::fromMap(message); }
    void sdkCrashed() override {}
    void notice(const QString&) override {}
    void textMessage(const QVariantMap&) override {}
    void userInfoChanged() override {}
    void connectionMade(TcpSocketManage* connection) override { delete connection; }
    void connectionClosed(TcpSocketManage*) override {}
};

struct Client {
    Client()
        : settings(folder.filePath(QStringLiteral("set.json"))) {
        settings.load();
        settings.set(keys::AcceptAlarms, true);
        storage.prepareDrives();
    }

    QTemporaryDir folder;
    QString drive = QDir(folder.path()).filePath(QStringLiteral("disk")) + QLatin1Char('/');
    Settings settings;
    TaskQueue queue;
    RecordingStorage storage{settings, queue, std::make_unique<SystemDisks>(QStringList{drive})};
    Events events;
    ClientCallback callback{settings, storage, queue, events};
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static Client client;
    const std::string text = fuzz::textOf(data, size);
    std::string reply;
    client.callback(text, reply);
    client.queue.drain();
    const QString folder = QDir::cleanPath(QString::fromStdString(reply));
    fuzz::demand(reply.empty() || folder.startsWith(QDir::cleanPath(client.drive) + QLatin1Char('/')),
                 "files of alarms go into the folders of the drive");

    const video::AvMessage message = video::parseAvMessage(text);
    if (const auto* const report = std::get_if<video::AvReportMap>(&message))
        video::AvReport::fromMap(video::toGuiMap(*report, QStringLiteral("device"), 3));
    return 0;
}
