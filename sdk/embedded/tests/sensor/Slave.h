#pragma once

#include "base/JsonText.h"
#include "sensor/Board.h"

#include <QProcess>

namespace ipncsdk::test {

/// The slave program, ended with this.
class Slave final {
public:
    explicit Slave(const QStringList& arguments) {
        process_.start(QStringLiteral(MODBUS_SLAVE), arguments);
        while (!process_.canReadLine() && process_.waitForReadyRead(30000)) {
        }
        port = process_.readLine().trimmed().toInt();
    }
    ~Slave() {
        process_.closeWriteChannel();
        process_.waitForFinished(10000);
    }
    Slave(const Slave&) = delete;
    Slave& operator=(const Slave&) = delete;

    void answer(const char* how) {
        process_.write(how);
        process_.write("\n");
        process_.waitForBytesWritten();
    }

    int port = 0;

private:
    QProcess process_;
};

inline Json portRecord(int pid, Json params) {
    return {{"pid", pid}, {"name", "p" + std::to_string(pid)}, {"unit", "x"}, {"params", std::move(params)}};
}

inline sensor::Board tcpBoard(int port, Json inputs, Json outputs = Json::array(), int timeout = 5000) {
    return sensor::boardOf(
        {{"pid", 1},
         {"type", "RS485"},
         {"params", {{"mode", "tcp"}, {"host", "127.0.0.1"}, {"port", port}, {"slave", 7}, {"timeout", timeout}}},
         {"input", std::move(inputs)},
         {"output", std::move(outputs)}});
}

} // namespace ipncsdk::test
