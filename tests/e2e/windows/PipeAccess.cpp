#include "e2e/windows/PipeAccess.h"

#include "e2e/Desktop.h"
#include "e2e/windows/Questions.h"

#include <QDataStream>

namespace {

constexpr QChar Separator = QLatin1Char(':');
constexpr int ConnectWait = 200; // ms: it is asked again by who waits for the program

/// On its way when this returns: nothing is written while an answer is waited for.
void send(QLocalSocket& socket, int question, const QStringList& things) {
    QDataStream stream(&socket);
    stream << question << things;
    while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(Desktop::Patience)) {
    }
}

} // namespace

QLocalSocket* PipeAccess::socketTo(qint64 process) {
    auto& socket = sockets_[process];
    if (socket != nullptr && socket->state() == QLocalSocket::ConnectedState)
        return socket.get();
    socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(questions::socketName(process));
    return socket->waitForConnected(ConnectWait) ? socket.get() : nullptr;
}

QVariantList PipeAccess::converse(qint64 process, int question, const QStringList& things) {
    QLocalSocket* const socket = socketTo(process);
    if (socket == nullptr)
        return {};
    send(*socket, question, things);
    QDataStream stream(socket);
    QVariantList result;
    for (;;) {
        stream.startTransaction();
        stream >> result;
        if (stream.commitTransaction())
            return result;
        if (!socket->waitForReadyRead(Desktop::Patience)) {
            sockets_.erase(process);
            return {};
        }
    }
}

QString PipeAccess::special(qint64 process, int question) {
    const QString id = converse(process, question, {}).value(0).toString();
    return id.isEmpty() ? QString() : QString::number(process) + Separator + id;
}

void PipeAccess::order(qint64 process, int question) {
    if (QLocalSocket* const socket = socketTo(process))
        send(*socket, question, {});
}

QVector<QVariant> PipeAccess::ask(What what, const QStringList& things) {
    // Those of one process together; the test's things are nearly always of one.
    std::map<qint64, std::pair<QVector<int>, QStringList>> parts;
    for (int i = 0; i < things.size(); ++i) {
        const QStringList place = things[i].split(Separator);
        if (place.size() != 2)
            continue;
        auto& [indices, ids] = parts[place[0].toLongLong()];
        indices += i;
        ids += place[1];
    }
    QVector<QVariant> result(things.size());
    for (const auto& [process, part] : parts) {
        const QVariantList answers = converse(process, static_cast<int>(what), part.second);
        for (int i = 0; i < part.first.size(); ++i) {
            QVariant answer = answers.value(i);
            if (what == What::Children) {
                QStringList ids;
                for (const QString& id : answer.toStringList())
                    ids += QString::number(process) + Separator + id;
                answer = ids;
            }
            result[part.first[i]] = answer;
        }
    }
    return result;
}
