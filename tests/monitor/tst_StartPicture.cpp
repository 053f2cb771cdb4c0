#include "base/Settings.h"
#include "base/ui/Style.h"
#include "monitor/Shortcuts.h"
#include "monitor/ui/settings/HelpSheet.h"
#include "monitor/ui/settings/PictureFile.h"
#include "monitor/ui/settings/StartPicture.h"
#include "support/MessageLog.h"

#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

/// The start page and the sheet of keys.
class tst_StartPicture final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { corvanta::applyStyle(); }
    void init();
    void wanted_data();
    void wanted();
    void fitsTheScreen_data();
    void fitsTheScreen();
    void entersOnce_data();
    void entersOnce();
    void entersByItself();
    void hostilePictures_data();
    void hostilePictures();
    void helpShowsEveryKey();
    void keysCanBePressed();

private:
    QString save(const QSize& size) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        const QString path = dir_->filePath(QStringLiteral("图.png"));
        return picture.save(path) ? path : QString();
    }
    void set(const char* key, const QVariant& value) { settings_->set(QString::fromUtf8(key), value); }

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<Settings> settings_;
};

void tst_StartPicture::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    settings_ = std::make_unique<Settings>(dir_->filePath(QStringLiteral("set.json")));
    settings_->load();
}

void tst_StartPicture::wanted_data() {
    QTest::addColumn<QVariant>("isShown");
    QTest::addColumn<QVariant>("picture"); // "+": one that can be read
    QTest::addColumn<bool>("appears");
    QTest::addColumn<int>("lines");
    QTest::newRow("absent") << QVariant() << QVariant() << false << 0;
    QTest::newRow("wanted") << QVariant(true) << QVariant("+") << true << 0;
    QTest::newRow("not wanted") << QVariant(false) << QVariant("+") << false << 0;
    QTest::newRow("no path") << QVariant(true) << QVariant() << false << 1;
    QTest::newRow("away") << QVariant(true) << QVariant("/gone.png") << false << 1;
    QTest::newRow("folder") << QVariant(true) << QVariant("/") << false << 1;
    QTest::newRow("wrong type") << QVariant(true) << QVariant(QVariantList{1}) << false << 1;
}

void tst_StartPicture::wanted() {
    QFETCH(QVariant, isShown);
    QFETCH(QVariant, picture);
    set("是否显示启动画面", isShown);
    set("启动画面图片路径", picture == QVariant("+") ? QVariant(save({64, 48})) : picture);
    const MessageLog log;
    QTEST(StartPicture::ifWanted(*settings_) != nullptr, "appears");
    QTEST(log.count(QStringLiteral("no start picture")), "lines");
}

void tst_StartPicture::fitsTheScreen_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(10, 10);
    QTest::newRow("wide") << QSize(4000, 50);
    QTest::newRow("high") << QSize(50, 4000);
    QTest::newRow("large") << QSize(3840, 2160);
}

void tst_StartPicture::fitsTheScreen() {
    QFETCH(QSize, size);
    set("是否显示启动画面", true);
    set("启动画面图片路径", save(size));
    const auto page = StartPicture::ifWanted(*settings_);
    QVERIFY(page != nullptr);
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.get()));
    const QSize screen = page->screen()->availableSize();
    QVERIFY(page->width() * 5 <= screen.width() * 4 + 5);
    QVERIFY(page->height() * 5 <= screen.height() * 4 + 5);
    const QRect button = page->findChild<QPushButton*>()->geometry();
    QVERIFY(page->rect().contains(button.size().width(), button.size().height()));
    // The picture is there, with its shape.
    const QImage shown = page->grab().toImage();
    int blueInRow = 0;
    int blueInColumn = 0;
    const QPoint middle(shown.width() / 2, (shown.height() - 56) / 2);
    for (int x = 0; x < shown.width(); ++x)
        blueInRow += shown.pixelColor(x, middle.y()) == QColor(Qt::blue) ? 1 : 0;
    for (int y = 0; y < shown.height(); ++y)
        blueInColumn += shown.pixelColor(middle.x(), y) == QColor(Qt::blue) ? 1 : 0;
    QVERIFY(blueInRow > 0 && blueInColumn > 0);
    const QSize kept = size.scaled(blueInRow, blueInColumn, Qt::KeepAspectRatio);
    QVERIFY(qAbs(kept.width() - blueInRow) <= qMax(2, blueInRow / 50) || blueInColumn <= 12 || blueInRow <= 12);
}

void tst_StartPicture::entersOnce_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "picture", "Enter", "Esc", "close"})
        QTest::newRow(way) << way;
}

void tst_StartPicture::entersOnce() {
    QFETCH(QString, way);
    set("是否显示启动画面", true);
    set("启动画面图片路径", save({300, 200}));
    const auto page = StartPicture::ifWanted(*settings_);
    QSignalSpy entered(page.get(), &StartPicture::sigEnter);
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.get()));
    auto* const button = page->findChild<QPushButton*>(QStringLiteral("startEnter"));
    QCOMPARE(button->text(), QStringLiteral("进入软件"));
    QTest::keyClick(page.get(), Qt::Key_A);
    QTest::mouseClick(page.get(), Qt::RightButton, Qt::NoModifier, QPoint(20, 20));
    QCOMPARE(entered.size(), 0);
    if (way == QLatin1String("button"))
        QTest::mouseClick(button, Qt::LeftButton);
    else if (way == QLatin1String("picture"))
        QTest::mouseClick(page.get(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    else if (way == QLatin1String("close"))
        page->close();
    else
        QTest::keyClick(button, way == QLatin1String("Esc") ? Qt::Key_Escape : Qt::Key_Return);
    QCOMPARE(entered.size(), 1);
    page->close();
    QCOMPARE(entered.size(), 1);
}

void tst_StartPicture::entersByItself() {
    set("是否显示启动画面", true);
    set("是否自动进入软件", true);
    set("启动画面图片路径", save({300, 200}));
    const auto page = StartPicture::ifWanted(*settings_);
    QSignalSpy entered(page.get(), &StartPicture::sigEnter);
    page->show();
    auto* const button = page->findChild<QPushButton*>(QStringLiteral("startEnter"));
    QSet<QString> texts{button->text()};
    QTRY_VERIFY_WITH_TIMEOUT((texts += button->text(), entered.size() == 1), 30000);
    QVERIFY(texts.contains(QStringLiteral("进入软件(3)")));
    QVERIFY(texts.contains(QStringLiteral("进入软件(1)")));
}

void tst_StartPicture::hostilePictures_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a picture");
    QTest::newRow("cut") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0", 19);
    // A bitmap of 30000 x 30000 pixels in a few bytes.
    QByteArray huge("BM", 2);
    const auto add = [&huge](std::uint32_t value, int bytes) { // little endian
        for (int i = 0; i < bytes; ++i)
            huge += static_cast<char>(i < 4 ? value >> (8 * i) & 0xff : 0);
    };
    add(0, 8), add(54, 4), add(40, 4), add(30000, 4), add(30000, 4), add(1, 2), add(24, 2), add(0, 24);
    QTest::newRow("too large") << huge;
}

void tst_StartPicture::hostilePictures() {
    QFETCH(QByteArray, content);
    const QString path = dir_->filePath(QStringLiteral("x.png"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    const auto read = corvanta::PictureFile::read(path, QSize(100, 100));
    QVERIFY(read.picture.isNull());
    QVERIFY(!read.problem.isEmpty());
}

void tst_StartPicture::helpShowsEveryKey() {
    HelpSheet sheet;
    sheet.resize(760, 400);
    sheet.show();
    QVERIFY(QTest::qWaitForWindowExposed(&sheet));
    QCOMPARE(sheet.columns(), 2);
    for (const QSize size : {QSize(400, 384), QSize(760, 400)}) {
        sheet.resize(size);
        QTRY_COMPARE(sheet.columns(), size.width() < 640 ? 1 : 2);
        QStringList texts;
        for (const QLabel* label : sheet.findChildren<QLabel*>()) {
            if (label->isVisible())
                texts += label->text();
        }
        for (const corvanta::Shortcut& shortcut : corvanta::shortcuts())
            QVERIFY2(texts.contains(QString::fromUtf8(shortcut.shown)) &&
                         texts.contains(QString::fromUtf8(shortcut.text)),
                     shortcut.text);
    }
    QTest::keyClick(&sheet, Qt::Key_Escape);
    QVERIFY(!sheet.isVisible());
}

void tst_StartPicture::keysCanBePressed() {
    for (const corvanta::Shortcut& shortcut : corvanta::shortcuts()) {
        for (const QString& key : shortcut.keys) {
            const QKeySequence sequence(key, QKeySequence::PortableText);
            QCOMPARE(sequence.count(), 1);
            QVERIFY2((sequence[0] & ~int(Qt::KeyboardModifierMask)) != Qt::Key_unknown, qPrintable(key));
        }
    }
}

QTEST_MAIN(tst_StartPicture)
#include "tst_StartPicture.moc"
