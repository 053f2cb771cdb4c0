#pragma once

#include "support/ProxyServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

/// nginx on loopback as a process of its own, ended with the object: an update server's folder over HTTP and, with a
/// certificate made for it, over HTTPS. Compresses what it is asked to.
class Nginx final {
public:
    Nginx() = default;
    ~Nginx() { stop(); }
    Nginx(const Nginx&) = delete;
    Nginx& operator=(const Nginx&) = delete;

    /// False when it does not serve.
    bool start() {
        for (const char* folder : {"www/pelmux_windows_updata/Corvanta", "temp"})
            QDir(dir_.path()).mkpath(QLatin1String(folder));
        return makeCertificate() && writeConfiguration() && run();
    }
    void stop() {
        process_.terminate();
        if (!process_.waitForFinished(10000))
            process_.kill();
    }

    QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(port_); }
    QString secureAddress() const { return QStringLiteral("https://127.0.0.1:%1").arg(securePort_); }
    /// Of the authority that signed the server's certificate.
    QString certificate() const { return dir_.filePath(QStringLiteral("cert.pem")); }
    /// Where the files of the update go.
    QString folder() const { return dir_.filePath(QStringLiteral("www/pelmux_windows_updata/Corvanta")); }

private:
    bool makeCertificate() {
        QProcess openssl;
        openssl.setWorkingDirectory(dir_.path());
        openssl.start(
            QStringLiteral("openssl"),
            QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout key.pem "
                           "-out cert.pem -days 2 -subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1")
                .split(QLatin1Char(' ')));
        return openssl.waitForFinished(60000) && openssl.exitCode() == 0;
    }
    bool writeConfiguration() {
        port_ = ProxyServer::freePort();
        securePort_ = ProxyServer::freePort();
        QFile file(dir_.filePath(QStringLiteral("nginx.conf")));
        const QByteArray at = dir_.path().toUtf8();
        return file.open(QIODevice::WriteOnly) &&
               file.write(
                   "daemon off; master_process off; worker_processes 1; pid " + at + "/pid; error_log stderr;\n" +
                   "events {}\nhttp {\naccess_log " + at + "/access.log;\n" + "client_body_temp_path " + at +
                   "/temp/body; proxy_temp_path " + at + "/temp/proxy; fastcgi_temp_path " + at +
                   "/temp/fastcgi; uwsgi_temp_path " + at + "/temp/uwsgi; scgi_temp_path " + at + "/temp/scgi;\n" +
                   "gzip on; gzip_types *; gzip_min_length 1; gzip_http_version 1.0;\nserver {\nlisten 127.0.0.1:" +
                   QByteArray::number(port_) + ";\nlisten 127.0.0.1:" + QByteArray::number(securePort_) +
                   " ssl;\nssl_certificate cert.pem; ssl_certificate_key key.pem;\nroot " + at +
                   "/www;\nlocation /moved/ { rewrite ^/moved/(.*)$ /$1 redirect; }\n}\n}\n") > 0;
    }
    bool run() {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // It is not on a plain user's path.
        const QString program =
            QStandardPaths::findExecutable(QStringLiteral("nginx"), {QStringLiteral("/usr/sbin")});
        process_.start(program, {QStringLiteral("-e"), QStringLiteral("stderr"), QStringLiteral("-p"), dir_.path(),
                                 QStringLiteral("-c"), dir_.filePath(QStringLiteral("nginx.conf"))});
        return process_.waitForStarted() && QTest::qWaitFor([this] { return answers(); }, 60000);
    }
    bool answers() const {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port_);
        return probe.waitForConnected(200);
    }

    QTemporaryDir dir_;
    QProcess process_;
    quint16 port_ = 0;
    quint16 securePort_ = 0;
};
