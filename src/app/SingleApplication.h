#pragma once

#include "platform/InstanceClaim.h"

#include <QApplication>
#include <QSharedMemory>
#include <QString>

class QLocalServer;

/// The application object of a program that runs once per user session.
///
/// The first process to make one holds a byte of shared memory for its life; whoever finds that byte is not the first
/// and can only send the first one a message. On Linux, where shared memory and sockets outlive a process that was
/// killed, a lock that the living process holds decides instead, and what a dead one left is removed; both lie in the
/// user's private runtime folder, so that users do not meet there.
///
/// Everything happens on the GUI thread.
class SingleApplication final : public QApplication {
    Q_OBJECT

public:
    /// `key` names the instance on this machine ("Corvanta").
    SingleApplication(int& argc, char** argv, const QString& key);
    ~SingleApplication() override;

    /// True if another process was there first.
    bool isRunning() const { return isRunning_; }

    /// Sends a text to the first process and waits for it to be taken, at most 1000 ms to connect and 1000 ms to
    /// write. False if this process is the first itself, or on any failure.
    bool sendMessage(const QString& message);

signals:
    /// Another process has sent this.
    void messageAvailable(const QString& message);

public slots:
    /// Reads the message of the next waiting connection, if there is one.
    void receiveMessage();

private:
    void becomeFirst();

    /// On Linux held by the first process; given up last, when the shared memory and the socket are gone.
    corvanta::platform::InstanceClaim claim_;
    bool isRunning_ = false;
    QString key_;
    QSharedMemory sharedMemory_;
    QLocalServer* localServer_ = nullptr; ///< a child of this object; only in the first process
    QString serverName_;                  ///< where the first process listens: a name, on Linux an absolute path
};
