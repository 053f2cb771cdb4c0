#include "api/SocketDelegate.h"
#include "base/JsonText.h"
#include "base/Text.h"

#include <QtTest>

#include <cstdint>
#include <limits>
#include <string>

using namespace ipncsdk;

/// The functions that outside text passes before it is used.
class tst_Text final : public QObject {
    Q_OBJECT

private slots:
    void plainText_data();
    void plainText();
    void deviceIds_data();
    void deviceIds();
    void wholeNumbers_data();
    void wholeNumbers();
    void delegates_data();
    void delegates();
};

void tst_Text::plainText_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("plain"); // as a text of up to 4 characters
    QTest::newRow("empty") << QByteArray("") << true;
    QTest::newRow("four Chinese characters") << QByteArray("园区大门") << true;
    QTest::newRow("five Chinese characters") << QByteArray("园区大门一") << false;
    QTest::newRow("beyond the first plane") << QByteArray("😀😀😀😀") << true;
    QTest::newRow("tab") << QByteArray("a\tb") << false;
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << false;
    QTest::newRow("delete") << QByteArray("\x7f") << false;
    QTest::newRow("C1 control") << QByteArray("\xc2\x85") << false;
    QTest::newRow("line separator") << QByteArray("\xe2\x80\xa8") << false;
    QTest::newRow("lone continuation") << QByteArray("\x80") << false;
    QTest::newRow("overlong slash") << QByteArray("\xc0\xaf") << false;
    QTest::newRow("overlong in three") << QByteArray("\xe0\x80\xaf") << false;
    QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80") << false;
    QTest::newRow("beyond Unicode") << QByteArray("\xf4\x90\x80\x80") << false;
    QTest::newRow("cut off") << QByteArray("\xe5\x9b") << false;
}

void tst_Text::plainText() {
    QFETCH(QByteArray, text);
    QTEST(isPlainText(text.toStdString(), 4), "plain");
}

void tst_Text::deviceIds_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("plain") << QByteArray("CAM0001") << true;
    QTest::newRow("Chinese") << QByteArray("大门-1") << true;
    QTest::newRow("dot inside") << QByteArray("a.b") << true;
    QTest::newRow("64 characters") << QByteArray(64, 'x') << true;
    QTest::newRow("65 characters") << QByteArray(65, 'x') << false;
    for (const char* bad : {"", ".", "..", "a..b", "a/b", "a\\b", "C:", ".a", "a.", " a", "a ", "a*", "a?", "a|b"})
        QTest::newRow(bad) << QByteArray(bad) << false;
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << false;
}

void tst_Text::deviceIds() {
    QFETCH(QByteArray, text);
    QTEST(isDeviceId(text.toStdString()), "good");
}

void tst_Text::wholeNumbers_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("whole");
    QTest::addColumn<qlonglong>("value");
    QTest::newRow("5") << QByteArray("5") << true << 5LL;
    QTest::newRow("-5") << QByteArray("-5") << true << -5LL;
    QTest::newRow("5.0") << QByteArray("5.0") << true << 5LL;
    QTest::newRow("5.5") << QByteArray("5.5") << false << 0LL;
    QTest::newRow("1e300") << QByteArray("1e300") << false << 0LL;
    QTest::newRow("largest") << QByteArray("9223372036854775807") << true << std::numeric_limits<qlonglong>::max();
    QTest::newRow("one more") << QByteArray("9223372036854775808") << false << 0LL;
    QTest::newRow("text") << QByteArray("\"5\"") << false << 0LL;
    QTest::newRow("true") << QByteArray("true") << false << 0LL;
    QTest::newRow("null") << QByteArray("null") << false << 0LL;
}

void tst_Text::wholeNumbers() {
    QFETCH(QByteArray, text);
    QFETCH(qlonglong, value);
    const auto number = integerOf(Json::parse(text.toStdString()));
    QTEST(number.has_value(), "whole");
    QCOMPARE(static_cast<qlonglong>(number.value_or(0)), value);
}

void tst_Text::delegates_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<qlonglong>("address");
    const auto largest = static_cast<qlonglong>(std::numeric_limits<std::intptr_t>::max());
    QTest::newRow("positive") << QByteArray("4096") << 4096LL;
    QTest::newRow("negative") << QByteArray("-4096") << -4096LL;
    QTest::newRow("largest") << QByteArray::number(largest) << largest;
    for (const char* bad : {"", "0", "-0", "+4096", " 4096", "4096 ", "4096\n", "0x1000", "1e3", "abc", "4096x",
                            "99999999999999999999999", "-99999999999999999999999"})
        QTest::newRow(bad) << QByteArray(bad) << 0LL;
}

void tst_Text::delegates() {
    QFETCH(QByteArray, reply);
    QFETCH(qlonglong, address);
    const auto pointer = reinterpret_cast<std::intptr_t>(api::delegateFromReply(reply.toStdString()));
    QCOMPARE(static_cast<qlonglong>(pointer), address);
}

QTEST_APPLESS_MAIN(tst_Text)
#include "tst_Text.moc"
