#include "video/LiveSessions.h"

#include <QTest>

using namespace corvanta::video;

namespace {

QStringList logLines; // of the running test

void keepLine(QtMsgType, const QMessageLogContext&, const QString& line) {
    logLines << line;
}

struct InWords {
    QString operator()(const StopRequest& a) const { return QStringLiteral("stop %1").arg(a.requestId); }
    QString operator()(const SendOpenRequest& a) const {
        return QStringLiteral("send %1@%2").arg(a.deviceId).arg(a.tileIndex);
    }
    QString operator()(const ShowTileText& a) const {
        return QStringLiteral("text@%1 %2").arg(a.tileIndex).arg(a.text);
    }
    QString operator()(const ClearAllTexts&) const { return QStringLiteral("clear texts"); }
    QString operator()(const StreamOpened& a) const {
        return QStringLiteral("opened %1@%2 %3 %4 %5")
            .arg(a.deviceId)
            .arg(a.tileIndex)
            .arg(a.requestId)
            .arg(a.connectionType, QStringList(a.parameters.keys()).join(QLatin1Char('+')));
    }
    QString operator()(const CloseTile& a) const { return QStringLiteral("close@%1").arg(a.tileIndex); }
    QString operator()(const StreamEnded& a) const {
        return QStringLiteral("ended %1 %2").arg(a.deviceId).arg(a.requestId);
    }
    QString operator()(const PreviewEnded& a) const {
        return QStringLiteral("preview off %1 %2").arg(a.deviceId).arg(a.requestId);
    }
};

QString inWords(const SessionActions& actions) {
    QStringList words;
    for (const SessionAction& action : actions) {
        words << std::visit(InWords(), action);
    }
    return words.join(QStringLiteral("; "));
}

AvReport report(const QStringList& step) {
    QVariantMap message{{QStringLiteral("type"), step[0]}};
    if (step[0] == QLatin1String("avstate")) {
        message.insert(QStringLiteral("state"), step[3].toInt());
    } else {
        message.insert(QStringLiteral("reqid"), step[3].toInt());
        message.insert(QStringLiteral("retcode"), step.value(4).toInt());
        message.insert(QStringLiteral("contype"), QStringLiteral("LOOP"));
        message.insert(QStringLiteral("avparam"), QVariantMap{{QStringLiteral("hd"), true}});
    }
    return AvReport::fromMap(toGuiMap(message, step[1], step[2].toInt()));
}

/// Plays one step: "open A 3", "sent A 3 101", "preview A 7", "stopdevice A", "stoptile 3", "stopall" or a report,
/// "avopen A 3 101", "avclose A 3 101 <retcode>", "avstate A 3 <state>".
QString play(LiveSessions& sessions, const QString& text) {
    const QStringList step = text.split(QLatin1Char(' '));
    if (step[0] == QLatin1String("open")) {
        return inWords(sessions.open(step[1], step[2].toInt()));
    }
    if (step[0] == QLatin1String("sent")) {
        sessions.onSent(step[1], step[2].toInt(), step[3].toInt());
        return {};
    }
    if (step[0] == QLatin1String("preview")) {
        sessions.setPreview(step[1], step[2].toInt());
        return {};
    }
    if (step[0] == QLatin1String("stopdevice")) {
        return inWords(sessions.stopDevice(step[1]));
    }
    if (step[0] == QLatin1String("stoptile")) {
        return inWords(sessions.stopTile(step[1].toInt()));
    }
    if (step[0] == QLatin1String("stopall")) {
        return inWords(sessions.stopAll());
    }
    return inWords(sessions.onReport(report(step)));
}

/// The tables of devices A and B and tiles 3 and 4: "A=101@3 B=0 3=101 4=0".
QString tables(const LiveSessions& sessions) {
    QStringList words;
    for (const QString& device : {QStringLiteral("A"), QStringLiteral("B")}) {
        const auto tile = sessions.tileOfDevice(device);
        words << device + QLatin1Char('=') + QString::number(sessions.requestOfDevice(device)) +
                     (tile ? QLatin1Char('@') + QString::number(*tile) : QString());
    }
    for (const int tile : {3, 4}) {
        words << QStringLiteral("%1=%2").arg(tile).arg(sessions.requestOfTile(tile));
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

class tst_LiveSessions : public QObject {
    Q_OBJECT
private slots:
    void life_data();
    void life();
    void stopAllEndsEverything();
};

void tst_LiveSessions::life_data() {
    QTest::addColumn<QStringList>("before"); // steps whose actions are another row's matter
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("actions");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QStringList>("log");

    const QStringList opening{QStringLiteral("open A 3"), QStringLiteral("sent A 3 101")};
    const QStringList open = opening + QStringList{QStringLiteral("avopen A 3 101")};
    const auto row = [](const char* name, const QStringList& before, const char* step, const char* actions,
                        const char* after, const QStringList& log = {}) {
        QTest::newRow(name) << before << QString::fromUtf8(step) << QString::fromUtf8(actions)
                            << QString::fromUtf8(after) << log;
    };
    const auto list = [](std::initializer_list<const char*> texts) {
        QStringList result;
        for (const char* text : texts) {
            result << QString::fromUtf8(text);
        }
        return result;
    };

    row("open from idle", {}, "open A 3", "send A@3", "A=0 B=0 3=0 4=0");
    row("open takes the preview's place", list({"preview A 9"}), "open A 3", "preview off A 9; send A@3",
        "A=0 B=0 3=0 4=0");
    row("request id stored", list({"open A 3"}), "sent A 3 101", "", "A=101@3 B=0 3=0 4=0");
    row("request refused", list({"open A 3"}), "sent A 3 0", "", "A=0 B=0 3=0 4=0",
        list({"open video request not sent \"A\""}));
    row("request failed", list({"open A 3"}), "sent A 3 -4", "", "A=0 B=0 3=0 4=0",
        list({"open video request not sent \"A\""}));

    row("state 0", opening, "avstate A 3 0", "text@3 正在获取视频信息...", "A=101@3 B=0 3=0 4=0");
    row("state 1", opening, "avstate A 3 1", "text@3 正在建立视频连接...", "A=101@3 B=0 3=0 4=0");
    row("state 7", opening, "avstate A 3 7", "text@3 正在加载视频数据...", "A=101@3 B=0 3=0 4=0");
    row("state of a lost connection", open, "avstate A 3 1", "text@3 正在建立视频连接...", "A=101@3 B=0 3=101 4=0");

    row("opened", opening, "avopen A 3 101", "text@3 打开成功; opened A@3 101 LOOP DeviceId+hd",
        "A=101@3 B=0 3=101 4=0");
    row("opened twice", open, "avopen A 3 101", "text@3 打开成功; opened A@3 101 LOOP DeviceId+hd",
        "A=101@3 B=0 3=101 4=0");
    row("opened without a stored id is adopted", {}, "avopen A 3 101",
        "text@3 打开成功; opened A@3 101 LOOP DeviceId+hd", "A=101@3 B=0 3=101 4=0", list({"not save reqid \"A\""}));
    row("opened without any id", {}, "avopen A 3 0", "", "A=0 B=0 3=0 4=0",
        list({"not save reqid \"A\"", "avopen without a request id ignored \"A\""}));
    row("opened of an older request", opening, "avopen A 3 100", "", "A=101@3 B=0 3=0 4=0",
        list({"reqid not equeal"}));

    row("closed while opening", opening, "avclose A 3 101 14", "text@3 打开失败(14); close@3; ended A 101",
        "A=0 B=0 3=0 4=0");
    row("closed when open", open, "avclose A 3 101 2", "text@3 打开失败(2); close@3; ended A 101", "A=0 B=0 3=0 4=0");
    row("closed erases the preview", open + list({"preview A 9"}), "avclose A 3 101 2",
        "text@3 打开失败(2); close@3; ended A 101; preview off A 9", "A=0 B=0 3=0 4=0");
    row("unknown report with a code", opening, "urlreq A 3 101 1", "text@3 打开失败(1); close@3; ended A 101",
        "A=0 B=0 3=0 4=0");
    row("unknown report without a code", opening, "urlreq A 3 101 0", "", "A=101@3 B=0 3=0 4=0");
    row("closed without a stored id", {}, "avclose A 3 101 2", "", "A=0 B=0 3=0 4=0",
        list({"!!!!!!!!!!!!!!avclose not save reqid"}));
    row("closed twice", open + list({"avclose A 3 101 2"}), "avclose A 3 101 2", "", "A=0 B=0 3=0 4=0",
        list({"!!!!!!!!!!!!!!avclose not save reqid"}));
    row("closed of an older request", open, "avclose A 3 100 2", "", "A=101@3 B=0 3=101 4=0",
        list({"!!!!!!!!!!!!!!reqid not equeal 101 100"}));
    row("closed after stop", open + list({"stopdevice A"}), "avclose A 3 101 2", "", "A=0 B=0 3=0 4=0",
        list({"!!!!!!!!!!!!!!avclose not save reqid"}));
    row("closed of the stopped request while a newer one runs",
        open + list({"open A 3", "open A 3", "sent A 3 102", "avopen A 3 102"}), "avclose A 3 101 2", "",
        "A=102@3 B=0 3=102 4=0", list({"!!!!!!!!!!!!!!reqid not equeal 102 101"}));

    row("open on an open tile stops", open, "open A 3", "stop 101; text@3 ; close@3; ended A 101", "A=0 B=0 3=0 4=0");
    row("open while opening cancels", opening, "open A 3", "stop 101; text@3 ; close@3; ended A 101",
        "A=0 B=0 3=0 4=0");
    row("open elsewhere while opening cancels", opening, "open A 4", "stop 101; text@3 ; close@3; ended A 101",
        "A=0 B=0 3=0 4=0");
    row("another device on an open tile stops the tile's", open + list({"preview B 9"}), "open B 3",
        "preview off B 9; stop 101; text@3 ; close@3; ended A 101", "A=0 B=0 3=0 4=0");
    row("another device while the tile's is opening is sent", opening, "open B 3", "send B@3", "A=101@3 B=0 3=0 4=0");
    row("after a failure it opens again", open + list({"avclose A 3 101 2"}), "open A 3", "send A@3",
        "A=0 B=0 3=0 4=0");

    const QStringList overtaken = opening + list({"open B 3", "sent B 3 102", "avopen A 3 101", "avopen B 3 102"});
    row("the later stream holds the tile", overtaken, "avstate B 3 2", "text@3 正在加载视频数据...",
        "A=101@3 B=102@3 3=102 4=0");
    row("the overtaken stream closes without the tile", overtaken, "avclose A 3 101 2", "ended A 101",
        "A=0 B=102@3 3=102 4=0");
    row("the overtaken stream is stopped without the tile", overtaken, "stopdevice A", "stop 101; ended A 101",
        "A=0 B=102@3 3=102 4=0");

    row("stop an opening device", opening, "stopdevice A", "stop 101; text@3 ; close@3; ended A 101",
        "A=0 B=0 3=0 4=0");
    row("stop a device twice", open + list({"stopdevice A"}), "stopdevice A", "", "A=0 B=0 3=0 4=0");
    row("stop an open tile", open, "stoptile 3", "stop 101; text@3 ; close@3; ended A 101", "A=0 B=0 3=0 4=0");
    row("stop an opening tile", opening, "stoptile 3", "stop 101; text@3 ; close@3; ended A 101", "A=0 B=0 3=0 4=0");
    row("stop another tile", open, "stoptile 4", "", "A=101@3 B=0 3=101 4=0");
    row("stop all of nothing", {}, "stopall", "clear texts", "A=0 B=0 3=0 4=0");
}

void tst_LiveSessions::life() {
    QFETCH(QStringList, before);
    QFETCH(QString, step);
    QFETCH(QString, actions);
    QFETCH(QString, after);
    QFETCH(QStringList, log);
    LiveSessions sessions;
    for (const QString& earlier : before) {
        play(sessions, earlier);
    }
    logLines.clear();
    const auto previous = qInstallMessageHandler(keepLine);
    const QString done = play(sessions, step);
    qInstallMessageHandler(previous);
    QCOMPARE(done, actions);
    QCOMPARE(tables(sessions), after);
    QCOMPARE(logLines, log);
}

void tst_LiveSessions::stopAllEndsEverything() {
    LiveSessions sessions;
    for (const char* step :
         {"open A 3", "sent A 3 101", "avopen A 3 101", "open B 4", "sent B 4 102", "preview C 9"}) {
        play(sessions, QString::fromLatin1(step));
    }
    QStringList done = inWords(sessions.stopAll()).split(QStringLiteral("; "));
    QCOMPARE(done.last(), QStringLiteral("clear texts"));
    done.sort();
    const QStringList wanted{QStringLiteral("clear texts"), QStringLiteral("close@3"),
                             QStringLiteral("close@4"),     QStringLiteral("ended A 101"),
                             QStringLiteral("ended B 102"), QStringLiteral("preview off C 9"),
                             QStringLiteral("stop 101"),    QStringLiteral("stop 102"),
                             QStringLiteral("text@3 "),     QStringLiteral("text@4 ")};
    QCOMPARE(done, wanted);
    QVERIFY(sessions.devices().isEmpty());
    QVERIFY(!sessions.hasPreview(QStringLiteral("C")));
    QCOMPARE(tables(sessions), QStringLiteral("A=0 B=0 3=0 4=0"));
}

QTEST_GUILESS_MAIN(tst_LiveSessions)
#include "tst_LiveSessions.moc"
