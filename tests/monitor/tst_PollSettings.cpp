#include "SettingsDialogTest.h"
#include "base/Settings.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>

/// The page of the screen polling, and what changes while the dialog is open.
class tst_PollSettings final : public SettingsDialogTest {
    Q_OBJECT
private slots:
    void pollEditorLife();
    void pollEntryKeys();
    void devicesChangeMeanwhile();
};

void tst_PollSettings::pollEditorLife() {
    const QString key = QStringLiteral("轮屏列表");
    settings().set(key, QVariantList{QVariantMap{
                            {"name", "<i>早班</i>"}, {"ipnclist", QStringList{"gone", "b"}}, {"color", "red"}}});
    open();
    page("pollPage");
    QCOMPARE(texts("pollEntries"), QStringList{QStringLiteral("<i>早班</i>")});
    QCOMPARE(texts("pollOrder"), (QStringList{QStringLiteral("gone(不存在)"), QStringLiteral("后门")}));
    QVERIFY(find<QTreeWidget>("pollTree")
                ->findItems(QStringLiteral("S"), Qt::MatchExactly | Qt::MatchRecursive)
                .isEmpty());
    QVERIFY(tick(QStringLiteral("大门")));
    QCOMPARE(texts("pollOrder").last(), QStringLiteral("大门"));
    click("pollDeviceUp");
    QCOMPARE(texts("pollOrder")[1], QStringLiteral("大门"));
    QVERIFY(tick(QStringLiteral("后门"))); // out again
    QCOMPARE(texts("pollOrder"), (QStringList{QStringLiteral("gone(不存在)"), QStringLiteral("大门")}));
    QVERIFY(tick(QStringLiteral("一楼"))); // a group ticks all its cameras
    QCOMPARE(texts("pollOrder").size(), 3);
    click("pollByGroups");
    QCOMPARE(texts("pollEntries").mid(1), (QStringList{QStringLiteral("一楼"), QStringLiteral("二楼")}));
    QCOMPARE(texts("pollOrder"),
             (QStringList{QStringLiteral("大门"), QStringLiteral("后门")})); // of the first new one
    click("pollUp");
    click("pollByGroups"); // has nothing to add
    QCOMPARE(texts("pollEntries").size(), 3);
    click("settingsOk");
    QCOMPARE(applied_, QStringList{key});
    const QVariantList expected{
        QVariantMap{{"name", "一楼"}, {"ipnclist", QVariantList{"a", "b"}}},
        QVariantMap{{"name", "<i>早班</i>"}, {"ipnclist", QVariantList{"gone", "a", "b"}}, {"color", "red"}},
        QVariantMap{{"name", "二楼"}, {"ipnclist", QVariantList{"c"}}}};
    QCOMPARE(fileValues().value(key).toList(), expected);
}

void tst_PollSettings::pollEntryKeys() {
    open();
    page("pollPage");
    QVERIFY(!find<QTreeWidget>("pollTree")->isEnabled()); // no entry to tick for
    QVERIFY(find<QLabel>("pollNotice")->text().contains(QStringLiteral("按分组生成")));
    click("pollAdd");
    auto* const list = find<QListWidget>("pollEntries");
    auto* editor = list->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr); // its name can be written at once
    QTest::keyClicks(editor, QStringLiteral("night"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(texts("pollEntries"), QStringList{QStringLiteral("night")});
    QVERIFY(dialog_->isVisible()); // Enter ended the writing, not the dialog
    QTRY_VERIFY(list->findChild<QLineEdit*>() == nullptr);
    click("pollRename");
    editor = list->findChild<QLineEdit*>();
    QTest::keyClicks(editor, QStringLiteral("dropped"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QVERIFY(dialog_->isVisible());
    QCOMPARE(texts("pollEntries"), QStringList{QStringLiteral("night")});
    QTRY_VERIFY(list->findChild<QLineEdit*>() == nullptr);
    click("pollAdd");
    QTest::keyClick(list->findChild<QLineEdit*>(), Qt::Key_Escape);
    QTRY_VERIFY(list->findChild<QLineEdit*>() == nullptr);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(texts("pollEntries"), QStringList{QStringLiteral("night")});
    click("settingsOk");
    QCOMPARE(manager_->context().poll.entries().size(), 1);
}

void tst_PollSettings::devicesChangeMeanwhile() {
    settings().set(QStringLiteral("默认分组"), QStringLiteral("2"));
    settings().set(QStringLiteral("轮屏列表"),
                   QVariantList{QVariantMap{{"name", "e"}, {"ipnclist", QStringList{"a"}}}});
    open();
    page("pollPage");
    QVERIFY(tick(QStringLiteral("走廊")));
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[{"ipncid":"a","name":"New","type":"video"}],
        "group":[{"id":"1","name":"一楼","ipnclist":["a"]}]})");
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(texts("pollOrder"), (QStringList{QStringLiteral("New"), QStringLiteral("c(不存在)")}));
    QCOMPARE(find<QComboBox>("defaultGroup")->currentText(), QStringLiteral("2(不存在)"));
    click("settingsOk");
    QCOMPARE(applied_, QStringList{QStringLiteral("轮屏列表")});
    QCOMPARE(settings().get(QStringLiteral("默认分组")).toString(), QStringLiteral("2"));
}

QTEST_MAIN(tst_PollSettings)
#include "tst_PollSettings.moc"
