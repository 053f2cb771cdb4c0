#include "Slave.h"
#include "sensor/Acquisition.h"

#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <mutex>

using namespace ipncsdk;
using namespace ipncsdk::sensor;
using ipncsdk::test::portRecord;
using ipncsdk::test::tcpBoard;

/// Boards that are polled together, with folders of value files as devices.
class tst_SensorAcquisition final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void filesAreInputsAndOutputs();
    void hangingBoardsDelayNoOther();
    void boardsComeAndGo();
    void valuesThatAreHandedIn();
    void computedOfOthers();

private:
    void set(int line, const char* text);
    SensorBoard folderBoard(int pid, bool reachable = true) const;

    std::unique_ptr<QTemporaryDir> folder_;
};

namespace {

/// Keeps what was read.
class Sink final : public ReadingSink {
public:
    void take(const std::vector<Reading>& readings) override {
        const std::lock_guard lock(mutex_);
        for (const Reading& reading : readings) {
            ++counts_[reading.pid];
            last_[reading.pid] = reading;
        }
    }
    int count(int pid) {
        const std::lock_guard lock(mutex_);
        return counts_[pid];
    }
    Reading last(int pid) {
        const std::lock_guard lock(mutex_);
        return last_[pid];
    }

private:
    std::mutex mutex_;
    std::map<int, int> counts_;
    std::map<int, Reading> last_;
};

struct Machine {
    Clock clock;
    Sink sink;
    Acquisition acquisition;

    Machine()
        : acquisition(clock, tools(), {&sink}) {}
    DriverTools tools() {
        return {[] { return std::chrono::system_clock::now(); },
                [this](const std::string&, int pid) {
                    const Reading last = sink.last(pid);
                    return last.pid == pid && last.normal ? std::make_optional(last.value) : std::nullopt;
                },
                [](const std::string&) {
                    return nullptr;
                }};
    }
};

} // namespace

void tst_SensorAcquisition::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    set(1, "20");
    set(2, "0");
}

void tst_SensorAcquisition::set(int line, const char* text) {
    QFile file(folder_->filePath(QString::number(line)));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

SensorBoard tst_SensorAcquisition::folderBoard(int pid, bool reachable) const {
    Json input = portRecord(pid + 1, {{"line", 1}});
    input.update({{"scale", 0.5}, {"offset", 1}});
    const Json record = {{"pid", pid},
                         {"type", "IO"},
                         {"params", {{"mode", "gpio"}, {"chip", folder_->path().toStdString()}, {"period", 100}}},
                         {"input", {input, portRecord(pid + 2, {{"line", 2}, {"invert", 1}})}},
                         {"output", {portRecord(pid + 3, {{"line", 2}}), portRecord(pid + 4, {{"line", 3}})}}};
    return {"CAM", boardOf(record), reachable};
}

void tst_SensorAcquisition::filesAreInputsAndOutputs() {
    Machine machine;
    machine.acquisition.setBoards({folderBoard(10)});
    QTRY_VERIFY(machine.sink.count(11) > 2);
    QCOMPARE(machine.sink.last(11).value, 11.0);
    QCOMPARE(machine.sink.last(12).value, 1.0);
    set(1, "40");
    QTRY_COMPARE(machine.sink.last(11).value, 21.0);
    // What is no number is no value, and does no harm to the others.
    set(1, "nan");
    QTRY_VERIFY(!machine.sink.last(11).normal);
    QVERIFY(machine.sink.last(12).normal);
    QVERIFY(machine.acquisition.write(13, 1) == ServiceCode::Done);
    QTRY_COMPARE(machine.sink.last(12).value, 0.0);
    QCOMPARE(machine.sink.last(13).value, 1.0);
    QVERIFY(machine.acquisition.write(14, 1) == ServiceCode::WriteFailed); // it has no file
    QVERIFY(machine.acquisition.write(11, 1) == ServiceCode::UnknownInput);
    QVERIFY(machine.acquisition.write(99, 1) == ServiceCode::UnknownInput);
    set(1, "8");
    QCOMPARE(machine.acquisition.readNow(11)->value, 5.0);
}

void tst_SensorAcquisition::hangingBoardsDelayNoOther() {
    QTcpServer silent; // takes connections and says nothing
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    std::vector<SensorBoard> boards;
    for (int i = 0; i < 6; ++i) {
        Board board = tcpBoard(silent.serverPort(), {portRecord(100 + i, {{"function", 3}})}, Json::array(), 4000);
        board.pid = 50 + i;
        boards.push_back({"CAM", board, true});
    }
    boards.push_back(folderBoard(10));
    Machine machine;
    machine.acquisition.setBoards(boards);
    QTRY_VERIFY(machine.sink.count(11) >= 10);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(machine.sink.count(100 + i), 0);
    for (int i = 0; i < 6; ++i)
        QTRY_COMPARE_WITH_TIMEOUT(machine.sink.count(100 + i), 1, 60000);
    QVERIFY(!machine.sink.last(100).normal);
}

void tst_SensorAcquisition::boardsComeAndGo() {
    Machine machine;
    machine.acquisition.setBoards({folderBoard(10)});
    QTRY_VERIFY(machine.sink.count(11) > 0);
    machine.acquisition.setBoards({folderBoard(10), folderBoard(20)});
    QTRY_VERIFY(machine.sink.count(21) > 0);
    machine.acquisition.setBoards({folderBoard(10, false)});
    QTRY_VERIFY(!machine.sink.last(11).normal);
    QCOMPARE(machine.sink.last(11).value, 11.0);
    QVERIFY(machine.acquisition.write(13, 1) == ServiceCode::DeviceOffline);
    QVERIFY(machine.acquisition.write(23, 1) == ServiceCode::UnknownInput);
    machine.acquisition.setBoards({});
    const int count = machine.sink.count(11);
    machine.acquisition.setBoards({folderBoard(20)});
    QTRY_VERIFY(machine.sink.count(21) > 3);
    QCOMPARE(machine.sink.count(11), count);
}

void tst_SensorAcquisition::valuesThatAreHandedIn() {
    Json input = portRecord(31, {{"axis", "QRcode_x"}});
    input["scale"] = 10;
    const Json record = {{"pid", 30}, {"type", "QR"}, {"params", Json::object()}, {"input", {input}}};
    Machine machine;
    machine.acquisition.setBoards({{"CAM", boardOf(record), true}, folderBoard(10)});
    QVERIFY(machine.acquisition.hand(31, 1.25) == ServiceCode::Done);
    QCOMPARE(machine.sink.last(31).value, 12.5);
    QCOMPARE(machine.acquisition.readNow(31)->value, 12.5);
    QVERIFY(machine.acquisition.hand(31, 1e308) == ServiceCode::UnknownInput); // no number once it is scaled
    QVERIFY(machine.acquisition.hand(11, 1) == ServiceCode::UnknownInput);
    QVERIFY(machine.acquisition.hand(99, 1) == ServiceCode::UnknownInput);
}

void tst_SensorAcquisition::computedOfOthers() {
    const Json record = {
        {"pid", 40},
        {"type", "SOFT"},
        {"params", {{"period", 100}}},
        {"input", {portRecord(41, {{"expression", "i11 / (i12 - 1)"}}), portRecord(42, {{"expression", "i11*2"}})}}};
    Machine machine;
    machine.acquisition.setBoards({{"CAM", boardOf(record), true}, folderBoard(10)});
    QTRY_COMPARE(machine.sink.last(42).value, 22.0);
    QVERIFY(!machine.sink.last(41).normal); // divided by zero
    set(2, "1");
    QTRY_VERIFY(machine.sink.last(41).normal);
    QCOMPARE(machine.sink.last(41).value, -11.0);
    set(1, "broken");
    QTRY_VERIFY(!machine.sink.last(42).normal);
}

QTEST_GUILESS_MAIN(tst_SensorAcquisition)
#include "tst_SensorAcquisition.moc"
