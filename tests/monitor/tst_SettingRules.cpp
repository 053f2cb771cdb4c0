#include "base/DeviceModel.h"
#include "base/Language.h"
#include "monitor/DriveOrder.h"
#include "monitor/Layouts.h"
#include "monitor/PollDraft.h"
#include "monitor/SettingChecks.h"
#include "monitor/Shortcuts.h"
#include "monitor/WindowMode.h"

#include <QTemporaryDir>
#include <QTest>

namespace settings = corvanta::settings;

/// The rules behind the settings' pages.
class tst_SettingRules final : public QObject {
    Q_OBJECT
private slots:
    void windowMode_data();
    void windowMode();
    void drives_data();
    void drives();
    void drivesHere();
    void draftLife();
    void draftOutsideItsLists();
    void draftOfGroups();
    void names_data();
    void names();
    void longestOpening_data();
    void longestOpening();
    void longestOpeningShown_data();
    void longestOpeningShown();
    void longestOpeningInEnglish();
    void proxy_data();
    void proxy();
    void sounds_data();
    void sounds();
    void keysAreUnique();
};

void tst_SettingRules::windowMode_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("onTop");
    QTest::addColumn<bool>("hidesTree");
    QTest::addColumn<QStringList>("written");
    const auto row = [](const char* name, const QVariant& stored, WindowMode::State state, bool onTop, bool hides,
                        const QStringList& written) {
        QTest::newRow(name) << stored << static_cast<int>(state) << onTop << hides << written;
    };
    using State = WindowMode::State;
    row("absent", {}, State::Normal, false, false, {});
    row("empty", QVariantList(), State::Normal, false, false, {});
    row("maximised", QStringList{"最大化"}, State::Maximized, false, false, {"最大化"});
    row("all", QVariantList{"置顶", "全屏", "隐藏设备树"}, State::FullScreen, true, true,
        {"全屏", "置顶", "隐藏设备树"});
    row("two states", QStringList{"全屏", "最大化"}, State::FullScreen, false, false, {"全屏"});
    row("one text", "最大化", State::Maximized, false, false, {"最大化"});
    row("unknown survive", QStringList{"分屏", "置顶"}, State::Normal, true, false, {"置顶", "分屏"});
    row("number", 7, State::Normal, false, false, {});
    row("map", QVariantMap{{"全屏", true}}, State::Normal, false, false, {});
    row("list of lists", QVariantList{QVariantList{"全屏"}, QVariantMap()}, State::Normal, false, false, {});
}

void tst_SettingRules::windowMode() {
    QFETCH(QVariant, stored);
    const WindowMode mode = WindowMode::fromSetting(stored);
    QTEST(static_cast<int>(mode.state), "state");
    QTEST(mode.onTop, "onTop");
    QTEST(mode.hidesDeviceTree, "hidesTree");
    QTEST(mode.toSetting(), "written");
}

void tst_SettingRules::drives_data() {
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("shown"); // root, "+" used, "!" away
    QTest::newRow("nothing") << QStringList() << QStringList() << QStringList();
    QTest::newRow("first start") << QStringList() << QStringList{"C:/", "D:/"} << QStringList{"C:/", "D:/"};
    QTest::newRow("stored order first") << QStringList{"E:/", "C:/"} << QStringList{"C:/", "D:/", "E:/"}
                                        << QStringList{"E:/+", "C:/+", "D:/"};
    QTest::newRow("away") << QStringList{"X:/", "D:/"} << QStringList{"D:/"} << QStringList{"X:/+!", "D:/+"};
    QTest::newRow("case counts") << QStringList{"d:/"} << QStringList{"D:/"} << QStringList{"d:/+!", "D:/"};
    QTest::newRow("repeated, empty") << QStringList{"D:/", "", "D:/"} << QStringList{"D:/", "D:/"}
                                     << QStringList{"D:/+"};
}

void tst_SettingRules::drives() {
    QFETCH(QStringList, stored);
    QFETCH(QStringList, present);
    QStringList shown;
    const auto space = [](const QString& root) {
        return DriveChoice::Space{static_cast<unsigned char>(root[0].toLatin1()), 200};
    };
    for (const DriveChoice& drive : corvanta::driveChoices(stored, present, space)) {
        shown += drive.root + (drive.isUsed ? "+" : "") + (drive.isPresent ? "" : "!");
        QCOMPARE(drive.space.has_value(), drive.isPresent);
        if (drive.space)
            QCOMPARE(drive.space->free, std::uint64_t(drive.root[0].unicode()));
    }
    QTEST(shown, "shown");
}

void tst_SettingRules::drivesHere() {
    const auto choices = corvanta::driveChoicesHere({QStringLiteral("/no/such/drive/")});
    QVERIFY(choices.size() >= 2);
    QVERIFY(!choices[0].isPresent && choices[0].isUsed);
    QVERIFY(choices[1].isPresent && !choices[1].isUsed);
    QVERIFY(choices[1].space && choices[1].space->total >= choices[1].space->free);
}

void tst_SettingRules::draftLife() {
    PollDraft draft(
        {PollEntry::fromMap({{"name", "早班"}, {"ipnclist", QStringList{"a", "gone"}}, {"color", "red"}})});
    QCOMPARE(draft.add(), 1);
    const QString name = draft.entries()[1].name;
    QVERIFY(!name.isEmpty());
    draft.rename(1, QStringLiteral("  <b>晚班</b>\n "));
    QCOMPARE(draft.entries()[1].name, QStringLiteral("<b>晚班</b>"));
    draft.rename(1, QStringLiteral(" \t"));
    QCOMPARE(draft.entries()[1].name, QStringLiteral("<b>晚班</b>"));
    draft.setDevice(1, "x", true);
    draft.setDevice(1, "y", true);
    draft.setDevice(1, "x", true); // stands there already
    QCOMPARE(draft.entries()[1].ipncIds, (QStringList{"x", "y"}));
    QCOMPARE(draft.moveDevice(1, 1, -1), 0);
    QCOMPARE(draft.entries()[1].ipncIds, (QStringList{"y", "x"}));
    draft.removeDevice(1, 0);
    QCOMPARE(draft.entries()[1].ipncIds, QStringList{"x"});
    QCOMPARE(draft.move(1, -1), 0);
    draft.setDevice(1, "gone", false);
    // What this program does not know of an entry survives.
    QCOMPARE(draft.entries()[1].toMap(),
             (QVariantMap{{"name", "早班"}, {"ipnclist", QStringList{"a"}}, {"color", "red"}}));
    draft.remove(0);
    QCOMPARE(draft.entries().size(), 1);
    // Names stay apart however entries were added and removed.
    for (int i = 0; i < 3; ++i)
        draft.add();
    draft.remove(1);
    draft.add();
    QSet<QString> all;
    for (const PollEntry& entry : draft.entries())
        all += entry.name;
    QCOMPARE(all.size(), draft.entries().size());
}

void tst_SettingRules::draftOutsideItsLists() {
    PollDraft draft({PollEntry{"e", {"a"}, {}}});
    for (const int place : {-1, 1, 99}) {
        draft.remove(place);
        draft.rename(place, "x");
        draft.setDevice(place, "b", true);
        draft.removeDevice(place, 0);
        draft.removeDevice(0, place);
        QCOMPARE(draft.move(place, 1), place);
        QCOMPARE(draft.moveDevice(0, place, -1), place);
        QCOMPARE(draft.moveDevice(place, 0, 1), 0);
    }
    QCOMPARE(draft.move(0, 1), 0);
    QCOMPARE(draft.move(0, -1), 0);
    QCOMPARE(draft.entries().size(), 1);
    QCOMPARE(draft.entries()[0].toMap(), (QVariantMap{{"name", "e"}, {"ipnclist", QStringList{"a"}}}));
}

void tst_SettingRules::draftOfGroups() {
    const auto device = [](const char* id, const char* type) {
        return QVariantMap{{"ipncid", id}, {"type", type}, {"online", false}};
    };
    const auto devices = DeviceModel::fromDocument(
        {{"ipnclist", QVariantList{device("a", "video"), device("s", "sensor"), device("b", "video")}},
         {"group", QVariantList{QVariantMap{{"id", "1"}, {"name", "一楼"}, {"ipnclist", QStringList{"b", "s", "a"}}},
                                QVariantMap{{"id", "2"}, {"name", "空"}, {"ipnclist", QStringList{"s"}}}}}});
    PollDraft draft;
    QCOMPARE(draft.addGroups(devices), 1);
    QCOMPARE(draft.entries()[0].name, QStringLiteral("一楼"));
    QCOMPARE(draft.entries()[0].ipncIds, (QStringList{"b", "a"}));
    draft.setDevice(0, "a", false);
    QCOMPARE(draft.addGroups(devices), 0); // what the user made of it stays
    QCOMPARE(draft.entries()[0].ipncIds, QStringList{"b"});
}

void tst_SettingRules::names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("application");
    QTest::addColumn<bool>("company");
    QTest::newRow("plain") << "Corvanta" << true << true;
    QTest::newRow("chinese, blanks") << "监控 平台" << true << true;
    QTest::newRow("beyond the first plane") << QString::fromUtf8("𠮷") << true << true;
    QTest::newRow("empty") << "" << false << true;
    QTest::newRow("blanks") << "   " << false << true;
    QTest::newRow("longest") << QString(64, QLatin1Char('x')) << true << true;
    QTest::newRow("too long") << QString(65, QLatin1Char('x')) << false << false;
    QTest::newRow("line end") << "a\nb" << false << false;
    QTest::newRow("zero") << QString(QChar(0)) << false << false;
}

void tst_SettingRules::names() {
    QFETCH(QString, name);
    QTEST(!settings::checkApplicationName(name).has_value(), "application");
    QTEST(!settings::checkCompanyName(name).has_value(), "company");
}

void tst_SettingRules::longestOpening_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariant>("stored"); // invalid: refused
    QTest::newRow("no limit") << "不限" << QVariant("不限");
    QTest::newRow("one") << "1" << QVariant(1);
    QTest::newRow("a day") << "1440" << QVariant(1440);
    QTest::newRow("more than a day") << "1441" << QVariant();
    for (const char* bad : {"", "0", "-1", "+1", "1.5", "1 2", "１", "abc", "0x10", "99999999999999999999", "不 限"})
        QTest::newRow(bad[0] == 0 ? "empty" : bad) << bad << QVariant();
}

void tst_SettingRules::longestOpening() {
    QFETCH(QString, text);
    QFETCH(QVariant, stored);
    QCOMPARE(!settings::checkLongestOpening(text).has_value(), stored.isValid());
    if (stored.isValid())
        QCOMPARE(settings::longestOpeningFromText(text), stored);
}

void tst_SettingRules::longestOpeningShown_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("absent") << QVariant() << "不限";
    QTest::newRow("number") << QVariant(5) << "5";
    QTest::newRow("from JSON") << QVariant(5.0) << "5";
    QTest::newRow("text") << QVariant("5") << "5";
    QTest::newRow("zero") << QVariant(0) << "不限";
    QTest::newRow("no number") << QVariant("never") << "不限";
    QTest::newRow("list") << QVariant(QVariantList{5}) << "不限";
    QTest::newRow("negative") << QVariant(-5) << "-5"; // is refused when it is to be stored
}

void tst_SettingRules::longestOpeningShown() {
    QFETCH(QVariant, stored);
    QTEST(settings::longestOpeningText(stored), "text");
}

// The word is another one, what is stored is not.
void tst_SettingRules::longestOpeningInEnglish() {
    const QVariant stored(QStringLiteral("不限"));
    corvanta::speak(QStringLiteral("en"));
    const QString text = settings::longestOpeningText(stored);
    const bool isTaken = !settings::checkLongestOpening(text).has_value();
    const QVariant again = settings::longestOpeningFromText(text);
    corvanta::speak(QStringLiteral("zh"));
    QCOMPARE(text, QStringLiteral("No limit"));
    QVERIFY(isTaken);
    QCOMPARE(again, stored);
}

void tst_SettingRules::proxy_data() {
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("good");
    const auto row = [](const char* name, const char* host, const char* port, const char* user, const char* password,
                        bool good) {
        QTest::newRow(name) << host << port << user << password << good;
    };
    row("open", "proxy.example", "1080", "", "", true);
    row("signed in", "192.0.2.1", "65535", "me", "p@ ss", true);
    row("address of six", "2001:db8::1", "1", "me", "", true);
    row("no host", "", "1080", "", "", false);
    row("blank in host", "a b", "1080", "", "", false);
    row("url", "http://a", "1080", "", "", false);
    row("line end in host", "a\r\nX: y", "1080", "", "", false);
    row("no port", "a", "", "", "", false);
    row("port 0", "a", "0", "", "", false);
    row("port too high", "a", "65536", "", "", false);
    row("port no number", "a", "8o", "", "", false);
    row("negative port", "a", "-1", "", "", false);
    row("password without user", "a", "1", "", "x", false);
}

void tst_SettingRules::proxy() {
    QFETCH(QString, host);
    QFETCH(QString, port);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QTEST(!settings::checkProxy({host, port, user, password}).has_value(), "good");
}

void tst_SettingRules::sounds_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("made");
    QTest::addColumn<bool>("good");
    QTest::newRow("none") << "" << false << true;
    QTest::newRow("wav") << "a.wav" << true << true;
    QTest::newRow("capitals") << "A B.MP3" << true << true;
    QTest::newRow("ogg") << "警报.ogg" << true << true;
    QTest::newRow("other") << "a.exe" << true << false;
    QTest::newRow("no suffix") << "wav" << true << false;
    QTest::newRow("away") << "b.wav" << false << false;
    QTest::newRow("folder") << "folder.wav" << false << false;
    QTest::newRow("address") << "http://example.org/a.wav" << false << false;
}

void tst_SettingRules::sounds() {
    QFETCH(QString, file);
    QFETCH(bool, made);
    const QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.wav")));
    const QString path = file.isEmpty() || file.contains("://") ? file : dir.filePath(file);
    if (made) {
        QFile sound(path);
        QVERIFY(sound.open(QIODevice::WriteOnly));
    }
    const auto problem = settings::checkSoundFile(QStringLiteral("其他报警"), path);
    QTEST(!problem.has_value(), "good");
    if (problem)
        QVERIFY(problem->contains(QStringLiteral("其他报警")));
}

void tst_SettingRules::keysAreUnique() {
    QSet<QString> seen;
    int count = 0;
    for (const corvanta::Shortcut& shortcut : corvanta::shortcuts()) {
        count += shortcut.keys.size();
        for (const QString& key : shortcut.keys)
            seen += key;
        if (shortcut.id == corvanta::ShortcutId::Layout)
            QCOMPARE(shortcut.keys.size(), static_cast<int>(corvanta::layouts().size()));
    }
    QCOMPARE(seen.size(), count);
}

QTEST_GUILESS_MAIN(tst_SettingRules)
#include "tst_SettingRules.moc"
