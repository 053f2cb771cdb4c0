#include "base/ServerErrors.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

namespace serverErrors = corvanta::serverErrors;

class tst_ServerErrors final : public QObject {
    Q_OBJECT
private slots:
    void replies_data();
    void replies();
    void everyServiceCodeHasAText();
};

void tst_ServerErrors::replies_data() {
    QTest::addColumn<QVariantMap>("reply");
    QTest::addColumn<bool>("success");
    QTest::addColumn<QString>("text");
    const auto resp = [](const QVariantMap& map) {
        return QVariantMap{{QStringLiteral("resp"), map}};
    };
    const QString errcode = QStringLiteral("errcode");
    QTest::newRow("empty") << QVariantMap() << false << QStringLiteral("操作失败(0)");
    QTest::newRow("state is a number") << resp({{QStringLiteral("state"), 0}}) << false
                                       << QStringLiteral("操作失败(0)");
    QTest::newRow("resp is a list") << QVariantMap{{QStringLiteral("resp"), QVariantList{1}}} << false
                                    << QStringLiteral("操作失败(0)");
    QTest::newRow("code below resp") << resp({{errcode, QStringLiteral("(not login)")}}) << false
                                     << QStringLiteral("当前未登录，请先登录!");
    QTest::newRow("code on top") << QVariantMap{{errcode, QStringLiteral("(not phonenumber)")}} << false
                                 << QStringLiteral("该手机号未注册!");
    QTest::newRow("number alone") << QVariantMap{{QStringLiteral("retcode"), 404}} << false
                                  << QStringLiteral("Http请求返回未发现文件404");
    QTest::newRow("number as text") << QVariantMap{{QStringLiteral("retcode"), QStringLiteral("500")}} << false
                                    << QStringLiteral("Http请求服务器返回出错");
    QTest::newRow("unknown code") << resp({{errcode, QStringLiteral("(new)")}}) << false
                                  << QStringLiteral("操作失败((new))");
    QTest::newRow("long code") << resp({{errcode, QString(10000, QLatin1Char('x'))}}) << false
                               << QStringLiteral("操作失败(%1)").arg(QString(64, QLatin1Char('x')));
    QTest::newRow("success") << resp({{QStringLiteral("state"), QStringLiteral("ok")}}) << true << QString();
}

void tst_ServerErrors::replies() {
    QFETCH(QVariantMap, reply);
    QFETCH(bool, success);
    QFETCH(QString, text);
    QCOMPARE(serverErrors::isSuccess(reply), success);
    if (!success)
        QCOMPARE(serverErrors::textOfReply(reply), text);
}

// The service's own table is the judge.
void tst_ServerErrors::everyServiceCodeHasAText() {
    QFile doc(QStringLiteral(PROJECT_DIR "/docs/service-protocol.md"));
    QVERIFY(doc.open(QIODevice::ReadOnly));
    const QRegularExpression line(QStringLiteral("^\\| (\\d+) \\| (\\([^|]+\\)) \\|"),
                                  QRegularExpression::MultilineOption);
    auto rows = line.globalMatch(QString::fromUtf8(doc.readAll()));
    int found = 0;
    while (rows.hasNext()) {
        const auto row = rows.next();
        ++found;
        const QString byCode = serverErrors::text(row.captured(2));
        QVERIFY2(!byCode.startsWith(QStringLiteral("操作失败")), qPrintable(row.captured(2)));
        QCOMPARE(serverErrors::textOfReply({{QStringLiteral("retcode"), row.captured(1).toInt()}}), byCode);
    }
    QVERIFY(found >= 10);
}

QTEST_GUILESS_MAIN(tst_ServerErrors)
#include "tst_ServerErrors.moc"
