#include "base/DeviceModel.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "support/MessageLog.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace keys = corvanta::keys;
using Mode = ScreenPoll::Mode;

Q_DECLARE_METATYPE(ScreenPoll::Mode)

/// Three entries: a (online) and b (offline); c, offline; d (online) and a device that is not there. And an empty
/// one.
class tst_ScreenPoll : public QObject {
    Q_OBJECT
private slots:
    void init();
    void steps_data();
    void steps();
    void entriesChangeWhileItRuns();
    void interval_data();
    void interval();
    void modeIsKept();
    void unknownKeysSurvive();

private:
    QTemporaryDir dir_;
    std::unique_ptr<Settings> settings_;
    std::unique_ptr<ScreenPoll> poll_;
    DeviceModel devices_;
};

void tst_ScreenPoll::init() {
    settings_ = std::make_unique<Settings>(dir_.filePath(QStringLiteral("set.json")));
    poll_ = std::make_unique<ScreenPoll>(*settings_);
    QVariantList list;
    for (const auto& [id, online] :
         {std::pair("a", true), std::pair("b", false), std::pair("c", false), std::pair("d", true)})
        list += QVariantMap{{QStringLiteral("ipncid"), QLatin1String(id)}, {QStringLiteral("online"), online}};
    devices_ = DeviceModel::fromDocument({{QStringLiteral("ipnclist"), list}});
    poll_->setEntries({{QStringLiteral("first"), {QStringLiteral("a"), QStringLiteral("b")}, {}},
                       {QStringLiteral("second"), {QStringLiteral("c")}, {}},
                       {QStringLiteral("empty"), {}, {}},
                       {QStringLiteral("third"), {QStringLiteral("d"), QStringLiteral("gone")}, {}}});
}

void tst_ScreenPoll::steps_data() {
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QStringList>("shown"); // one text a step, devices joined by blanks
    QTest::newRow("off") << Mode::Off << QStringList{QString(), QString()};
    QTest::newRow("videos: online devices only, round and round")
        << Mode::Videos
        << QStringList{QStringLiteral("a"), QStringLiteral("d"), QStringLiteral("a"), QStringLiteral("d")};
    QTest::newRow("previews: all") << Mode::Previews
                                   << QStringList{QStringLiteral("a b"), QStringLiteral("c"),
                                                  QStringLiteral("d gone"), QStringLiteral("a b")};
}

void tst_ScreenPoll::steps() {
    QFETCH(Mode, mode);
    QFETCH(QStringList, shown);
    poll_->setPollValue(mode);
    for (const QString& step : shown)
        QCOMPARE(poll_->getNextPollDevices(devices_).join(QLatin1Char(' ')), step);
}

void tst_ScreenPoll::entriesChangeWhileItRuns() {
    poll_->setPollValue(Mode::Previews);
    for (int step = 0; step < 3; ++step)
        poll_->getNextPollDevices(devices_);
    // The last one shown was the fourth; a shorter ring begins anew.
    poll_->setEntries({{QStringLiteral("only"), {QStringLiteral("b")}, {}}});
    QCOMPARE(poll_->getNextPollDevices(devices_), QStringList{QStringLiteral("b")});
    QCOMPARE(poll_->getNextPollDevices(devices_), QStringList{QStringLiteral("b")});
    poll_->setPollValue(Mode::Videos);
    QVERIFY(poll_->getNextPollDevices(devices_).isEmpty()); // b is offline
    settings_->set(keys::PollEntries, QStringLiteral("nonsense"));
    QVERIFY(poll_->getNextPollDevices(devices_).isEmpty());
    settings_->set(keys::PollEntries, QVariantList{42, QVariantMap{{QStringLiteral("ipnclist"), 7}}});
    QVERIFY(poll_->getNextPollDevices(devices_).isEmpty());
}

void tst_ScreenPoll::interval_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("seconds");
    QTest::newRow("missing") << QVariant() << 5;
    QTest::newRow("0") << QVariant(0) << 5;
    QTest::newRow("1") << QVariant(1) << 1;
    QTest::newRow("3600") << QVariant(3600) << 3600;
    QTest::newRow("3601") << QVariant(3601) << 5;
    QTest::newRow("negative") << QVariant(-3) << 5;
    QTest::newRow("a text") << QVariant(QStringLiteral("soon")) << 5;
    QTest::newRow("a number as text") << QVariant(QStringLiteral("12")) << 12;
}

void tst_ScreenPoll::interval() {
    QFETCH(QVariant, stored);
    QFETCH(int, seconds);
    settings_->set(keys::PollInterval, stored);
    QCOMPARE(poll_->interval(), seconds);
    QCOMPARE(settings_->get(keys::PollInterval).toInt(), seconds);
}

void tst_ScreenPoll::modeIsKept() {
    QSignalSpy changed(poll_.get(), &ScreenPoll::modeChanged);
    MessageLog log;
    poll_->setPollValue(Mode::Previews);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(log.count(QStringLiteral("setPollValue ")), 1);
    settings_->finishSaving();
    Settings again(dir_.filePath(QStringLiteral("set.json")));
    again.load();
    QCOMPARE(ScreenPoll(again).mode(), Mode::Previews);
    QCOMPARE(ScreenPoll(again).entries().size(), 4);
}

void tst_ScreenPoll::unknownKeysSurvive() {
    settings_->set(keys::PollEntries, QVariantList{QVariantMap{{QStringLiteral("name"), QStringLiteral("n")},
                                                               {QStringLiteral("later"), 3}}});
    QList<PollEntry> entries = poll_->entries();
    entries[0].ipncIds = QStringList{QStringLiteral("a")};
    poll_->setEntries(entries);
    const QVariantMap kept = settings_->get(keys::PollEntries).toList().value(0).toMap();
    QCOMPARE(kept.value(QStringLiteral("later")).toInt(), 3);
    QCOMPARE(kept.value(QStringLiteral("ipnclist")).toStringList(), QStringList{QStringLiteral("a")});
}

QTEST_GUILESS_MAIN(tst_ScreenPoll)
#include "tst_ScreenPoll.moc"
