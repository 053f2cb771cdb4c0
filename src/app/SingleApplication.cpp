#include "app/SingleApplication.h"

#include "platform/RuntimeFolder.h"

#include <QDebug>
#include <QLocalServer>
#include <QLocalSocket>
#include <QUrl>

namespace {

constexpr int longestWaitMs = 1000;

using Claim = corvanta::platform::InstanceClaim::Result;

#ifdef Q_OS_UNIX
/// The start of the names of the instance's socket, shared memory and lock: an absolute path. Empty without a folder
/// that is the user's alone.
QString privateName(const QString& key) {
    const auto folder = corvanta::platform::runtimeFolder();
    if (!folder) {
        return {};
    }
    // The key is a name, never a way out of the folder.
    return QString::fromStdString(folder->string()) + QLatin1Char('/') +
           QString::fromLatin1(QUrl::toPercentEncoding(key));
}
#endif

} // namespace

SingleApplication::SingleApplication(int& argc, char** argv, const QString& key)
    : QApplication(argc, argv)
    , key_(key)
    , serverName_(key) {
    Claim claim = Claim::Undecided;
#ifdef Q_OS_UNIX
    const QString name = privateName(key);
    if (name.isEmpty()) {
        sharedMemory_.setKey(key_);
    } else {
        serverName_ = name;
        sharedMemory_.setNativeKey(name + QLatin1String(".memory"));
        claim = claim_.claim((name + QLatin1String(".lock")).toStdString());
    }
#else
    sharedMemory_.setKey(key_);
#endif

    if (claim == Claim::Ours) {
        // Whatever is there was left by a process that was killed. The last to detach removes it.
        if (sharedMemory_.attach()) {
            sharedMemory_.detach();
        }
        QLocalServer::removeServer(serverName_);
    } else if (claim == Claim::Another || sharedMemory_.attach(QSharedMemory::ReadWrite)) {
        // One that is refused on a claim must not attach: it would keep the segment of a first one that is killed.
        isRunning_ = true;
        return;
    }
    becomeFirst();
}

SingleApplication::~SingleApplication() {
    // Closing removes the socket's file, which may be another process's as soon as the claim is given up.
    delete localServer_;
}

void SingleApplication::becomeFirst() {
    if (!sharedMemory_.create(1, QSharedMemory::ReadWrite)) {
        qDebug() << "Unable to create single instance.";
        return;
    }
    localServer_ = new QLocalServer(this);
    connect(localServer_, &QLocalServer::newConnection, this, &SingleApplication::receiveMessage);
    if (!localServer_->listen(serverName_)) {
        qDebug() << localServer_->errorString();
    }
}

bool SingleApplication::sendMessage(const QString& message) {
    if (!isRunning_) {
        return false;
    }
    QLocalSocket socket;
    socket.connectToServer(serverName_, QIODevice::WriteOnly);
    if (!socket.waitForConnected(longestWaitMs)) {
        qDebug() << socket.errorString();
        return false;
    }
    socket.write(message.toUtf8());
    if (!socket.waitForBytesWritten(longestWaitMs)) {
        qDebug() << socket.errorString();
        return false;
    }
    socket.disconnectFromServer();
    return true;
}

void SingleApplication::receiveMessage() {
    QLocalSocket* const socket = localServer_ == nullptr ? nullptr : localServer_->nextPendingConnection();
    if (socket == nullptr) {
        return;
    }
    if (socket->bytesAvailable() > 0 || socket->waitForReadyRead(longestWaitMs)) {
        emit messageAvailable(QString::fromUtf8(socket->readAll()));
        socket->disconnectFromServer();
    } else {
        qDebug() << socket->errorString();
    }
    socket->deleteLater();
}
