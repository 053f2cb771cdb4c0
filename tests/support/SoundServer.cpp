#include "support/SoundServer.h"

#include <QDeadlineTimer>
#include <QFile>

namespace {

constexpr int Patience = 60000; // ms

QStringList form(int rate) {
    return {QStringLiteral("--raw"), QStringLiteral("--format=s16le"), QStringLiteral("--channels=1"),
            QStringLiteral("--rate=%1").arg(rate), QStringLiteral("--latency-msec=20")};
}

} // namespace

SoundServer::~SoundServer() {
    for (QProcess* const process : {&mouth_, &ear_, &server_})
        end(*process);
}

void SoundServer::end(QProcess& process) {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(Patience))
        process.kill();
}

bool SoundServer::start() {
    const QString socket = dir_.filePath(QStringLiteral("native"));
    QFile script(dir_.filePath(QStringLiteral("server.pa")));
    // Sound that was handed over is never taken back, or the end of a short one would be.
    const QByteArray lines = "load-module module-native-protocol-unix auth-anonymous=1 socket=" + socket.toUtf8() +
                             "\n"
                             "load-module module-null-sink sink_name=loudspeaker norewinds=1 rate=48000\n"
                             "load-module module-null-sink sink_name=room norewinds=1 rate=48000\n"
                             "load-module module-remap-source source_name=microphone master=room.monitor\n"
                             "set-default-sink loudspeaker\n"
                             "set-default-source microphone\n";
    if (!script.open(QIODevice::WriteOnly) || script.write(lines) != lines.size())
        return false;
    script.close();
    for (const char* const name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"})
        qputenv(name, dir_.path().toUtf8());
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server_.start(QStringLiteral("pulseaudio"),
                  {QStringLiteral("--daemonize=no"), QStringLiteral("-n"), QStringLiteral("-F"), script.fileName(),
                   QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--use-pid-file=no"),
                   QStringLiteral("--realtime=no"), QStringLiteral("--high-priority=no"),
                   QStringLiteral("--disable-shm=yes"), QStringLiteral("--log-level=error")});
    if (!server_.waitForStarted(Patience))
        return false;
    // The script is done from top to bottom: once its last line holds, all of it does.
    for (QDeadlineTimer time(Patience); !time.hasExpired() && server_.state() == QProcess::Running;) {
        QProcess asks;
        asks.start(QStringLiteral("pactl"), {QStringLiteral("get-default-source")});
        if (asks.waitForFinished(Patience) && asks.readAllStandardOutput().trimmed() == "microphone")
            return true;
        server_.waitForReadyRead(20);
    }
    return false;
}

void SoundServer::listen() {
    ear_.start(QStringLiteral("parec"), QStringList{QStringLiteral("--device=loudspeaker.monitor")} + form(Rate));
    ear_.waitForStarted(Patience);
}

const QByteArray& SoundServer::heard() {
    heard_ += ear_.readAllStandardOutput();
    return heard_;
}

void SoundServer::forget() {
    ear_.readAllStandardOutput();
    heard_.clear();
}

void SoundServer::speak(const QByteArray& samples, int rate) {
    QFile file(dir_.filePath(QStringLiteral("speech.raw")));
    if (file.open(QIODevice::WriteOnly))
        file.write(samples);
    file.close();
    mouth_.start(QStringLiteral("pacat"), QStringList{QStringLiteral("--playback"), QStringLiteral("--device=room")} +
                                              form(rate) + QStringList{file.fileName()});
    mouth_.waitForStarted(Patience);
}
