#include "base/Language.h"
#include "base/ui/BarButton.h"
#include "base/ui/Worded.h"

#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QToolButton>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

/// The languages of the interface, and texts that follow them.
class tst_Language final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { corvanta::speak(QStringLiteral("zh")); }
    void codes_data();
    void codes();
    void toolkitSpeaksChinese();
    void followsWhileItLives();
    void everyTextIsTranslated();
};

namespace {

QString cancel() {
    return QCoreApplication::translate("TipDialog", "取消");
}

/// The placeholders of a text, sorted.
QStringList placeholders(const QString& text) {
    static const QRegularExpression placeholder(QStringLiteral("%[0-9]"));
    QStringList found;
    for (auto match = placeholder.globalMatch(text); match.hasNext();)
        found += match.next().captured();
    found.sort();
    return found;
}

} // namespace

void tst_Language::codes_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QLocale::Language>("language");
    QTest::newRow("Chinese") << QStringLiteral("zh") << QStringLiteral("取消") << QLocale::Chinese;
    QTest::newRow("English") << QStringLiteral("en") << QStringLiteral("Cancel") << QLocale::English;
    QTest::newRow("none") << QString() << QStringLiteral("取消") << QLocale::Chinese;
    QTest::newRow("unknown") << QStringLiteral("../en") << QStringLiteral("取消") << QLocale::Chinese;
}

void tst_Language::codes() {
    QFETCH(QString, code);
    QFETCH(QString, text);
    corvanta::speak(QStringLiteral("en"));
    corvanta::speak(code);
    QCOMPARE(cancel(), text);
    QTEST(corvanta::spokenLocale().language(), "language");
}

void tst_Language::toolkitSpeaksChinese() {
    corvanta::speak(QStringLiteral("zh"));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    corvanta::speak(QStringLiteral("en"));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
}

void tst_Language::followsWhileItLives() {
    QWidget window;
    auto* const label = new QLabel(&window);
    int said = 0;
    corvanta::wordedText(label, [&said] {
        ++said;
        return cancel();
    });
    QToolButton* const button = corvanta::barButton(
        &window, QStringLiteral("b"), [] { return cancel(); }, QStringLiteral("close"));
    QCOMPARE(label->text(), QStringLiteral("取消"));
    QSignalSpy changed(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed);
    corvanta::speak(QStringLiteral("en"));
    QVERIFY(!changed.isEmpty());
    QCOMPARE(label->text(), QStringLiteral("Cancel"));
    QCOMPARE(button->toolTip(), QStringLiteral("Cancel"));
    QCOMPARE(button->accessibleName(), QStringLiteral("Cancel"));
    delete label;
    const int before = said;
    corvanta::speak(QStringLiteral("zh"));
    QCOMPARE(said, before);
    QCOMPARE(button->text(), QStringLiteral("取消"));
}

// What a translator forgets shows only in the one dialog that needs it.
void tst_Language::everyTextIsTranslated() {
    QFile file(QStringLiteral(PROJECT_DIR "/translations/corvanta_en.ts"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    static const QRegularExpression chinese(QStringLiteral("[\u4e00-\u9fff，。；：？！（）]"));
    QString source;
    int texts = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("source")) {
            source = reader.readElementText();
        } else if (reader.name() == QLatin1String("translation")) {
            const bool finished = !reader.attributes().hasAttribute(QStringLiteral("type"));
            const QString text = reader.readElementText();
            QVERIFY2(finished && !text.trimmed().isEmpty(), qPrintable(source));
            QVERIFY2(placeholders(text) == placeholders(source), qPrintable(source));
            QVERIFY2(!chinese.match(text).hasMatch(), qPrintable(text));
            // Lists of choices in one text.
            QVERIFY2(text.count(QLatin1Char('|')) == source.count(QLatin1Char('|')), qPrintable(source));
            ++texts;
        }
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QVERIFY(texts > 1000);
}

QTEST_MAIN(tst_Language)
#include "tst_Language.moc"
