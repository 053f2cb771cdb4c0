#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <string>

/// The test camera that speaks ONVIF (tests/support/onvif-device.py) as a process of its own, ended with the object.
class OnvifDevice final {
public:
    explicit OnvifDevice(const QStringList& modes = {}, const QStringList& more = {}) {
        QStringList arguments = more;
        for (const QString& mode : modes)
            arguments << QStringLiteral("--mode") << mode;
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral(CORVANTA_ONVIF_DEVICE), arguments);
        while ((port_ == 0 || searchPort_ == 0) && nextLine()) {
        }
    }
    ~OnvifDevice() {
        process_.kill();
        process_.waitForFinished(60000);
    }
    OnvifDevice(const OnvifDevice&) = delete;
    OnvifDevice& operator=(const OnvifDevice&) = delete;

    /// 0 when it does not serve.
    int port() const { return port_; }
    /// Where it hears searches.
    int searchPort() const { return searchPort_; }
    std::string host() const { return "127.0.0.1:" + std::to_string(port_); }
    std::string url() const { return "http://" + host() + "/onvif/device_service"; }

    /// The next operation that it has carried out; waits for it.
    QJsonObject nextCall() {
        while (calls_.isEmpty() && nextLine()) {
        }
        return calls_.isEmpty() ? QJsonObject() : calls_.takeFirst();
    }

private:
    bool nextLine() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60000))
                return false;
        }
        const QByteArray line = process_.readLine().trimmed();
        if (line.startsWith("PORT "))
            port_ = line.mid(5).toInt();
        else if (line.startsWith("UDP "))
            searchPort_ = line.mid(4).toInt();
        else if (line.startsWith("CALL "))
            calls_.append(QJsonDocument::fromJson(line.mid(5)).object());
        return true;
    }

    QProcess process_;
    int port_ = 0;
    int searchPort_ = 0;
    QList<QJsonObject> calls_;
};
