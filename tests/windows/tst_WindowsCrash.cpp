#include "e2e/ProgramTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtEndian>
#include <QtTest>

namespace {

constexpr quint32 ExceptionStream = 6;
constexpr quint32 AccessViolation = 0xc0000005;

/// A minidump's streams, by the documented layout: a header, and a directory of type, size and place.
class Minidump final {
public:
    explicit Minidump(QByteArray content)
        : content_(std::move(content)) {}

    bool hasSignature() const { return content_.startsWith("MDMP"); }
    /// Where a stream begins; -1 when there is none.
    int stream(quint32 type) const {
        const quint32 count = number(8);
        const quint32 directory = number(12);
        for (quint32 i = 0; i < count; ++i) {
            const int entry = static_cast<int>(directory + 12 * i);
            if (number(entry) == type)
                return static_cast<int>(number(entry + 8));
        }
        return -1;
    }
    quint32 number(int place) const {
        return place >= 0 && place + 4 <= content_.size() ? qFromLittleEndian<quint32>(content_.constData() + place)
                                                          : 0;
    }

private:
    QByteArray content_;
};

} // namespace

/// A crash of the program leaves a minidump and is told.
class tst_WindowsCrash final : public ProgramTest {
    Q_OBJECT
private slots:
    void leavesMinidump();
};

void tst_WindowsCrash::leavesMinidump() {
    STEP(start());
    program().crash();
    COMES(Desktop::isActive(QStringLiteral("^程序崩溃$")));
    const QStringList dumps = QDir(data()).entryList({QStringLiteral("*.DMP")});
    QCOMPARE(dumps.size(), 1);
    QVERIFY(
        QRegularExpression(QStringLiteral("^\\d{4}_\\d\\d_\\d\\d_\\d{6}\\.DMP$")).match(dumps.first()).hasMatch());
    QFile file(data() + QLatin1Char('/') + dumps.first());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const Minidump dump(file.readAll());
    QVERIFY(dump.hasSignature());
    const int exception = dump.stream(ExceptionStream);
    QVERIFY(exception > 0);
    // The thread's id and padding, then code, flags, a chained record and the address, each as 64 bits where named
    // so.
    QCOMPARE(dump.number(exception + 8), AccessViolation);
    const quint32 address = dump.number(exception + 8 + 16);
    QVERIFY(address != 0);
    Desktop::keys({QStringLiteral("Return")});
    // It has ended, with an exception's code, which is none of its own.
    QVERIFY(!program().exitCode());
    QVERIFY(!program().isRunning());
}

QTEST_MAIN(tst_WindowsCrash)
#include "tst_WindowsCrash.moc"
