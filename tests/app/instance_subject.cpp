// Runs once: instance_subject KEY [MESSAGE]. Prints "first", then every message that comes, and ends on the message
// "quit"; or prints "running" and "sent" or "not sent", and ends at once.

#include "app/SingleApplication.h"

#include <cstdio>

namespace {

void say(const QString& text) {
    std::puts(text.toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    SingleApplication application(argc, argv, QString::fromLocal8Bit(argc > 1 ? argv[1] : "Corvanta"));
    const QStringList arguments = QCoreApplication::arguments();
    if (application.isRunning()) {
        say(QStringLiteral("running"));
        say(application.sendMessage(arguments.value(2)) ? QStringLiteral("sent") : QStringLiteral("not sent"));
        return 0;
    }
    QObject::connect(&application, &SingleApplication::messageAvailable, [](const QString& message) {
        say(QStringLiteral("message ") + message);
        if (message == QLatin1String("quit"))
            QCoreApplication::quit();
    });
    say(application.sendMessage(QStringLiteral("to myself")) ? QStringLiteral("wrong") : QStringLiteral("first"));
    return QApplication::exec();
}
