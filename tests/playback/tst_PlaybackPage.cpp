#include "base/ui/Style.h"
#include "playback/NumberedVideo.h"
#include "playback/ui/ExportDialog.h"
#include "playback/ui/PlaybackPage.h"
#include "playback/ui/PlaybackTile.h"
#include "playback/ui/PlaybackWall.h"
#include "playback/ui/TimeAxis.h"
#include "video/ui/GLYuvWidget.h"

#include <QDateTime>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest>

using namespace corvanta::playback;

class tst_PlaybackPage final : public QObject {
    Q_OBJECT

    static constexpr int Waiting = 60000; // ms, for what a sanitizer slows down

    QTemporaryDir dir_;
    std::unique_ptr<PlaybackPage> page_;
    const QDateTime start_{QDate(2026, 3, 5), QTime(23, 59, 50)};

    QString path(const QString& name) const { return dir_.filePath(name); }
    Moment at(double second) const { return toMoment(start_) + std::chrono::microseconds(qRound64(second * 1e6)); }
    PlaybackSession& session() const { return *page_->session(); }
    int shown(int camera) const { return numbered::numberOf(page_->wall().tile(camera).picture().get()); }
    QToolButton& button(const char* name) const { return *page_->findChild<QToolButton*>(QLatin1String(name)); }
    void click(const char* name) const { QTest::mouseClick(&button(name), Qt::LeftButton); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QWidget* const focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : page_.get(), key, modifiers);
    }
    /// "一号" from 0 to 8 s, "二号" from 2 to 10 s and from 20 to 24 s.
    QVector<PlaybackCamera> cameras() const {
        return {{QStringLiteral("一号"), QStringLiteral("1"), {path(QStringLiteral("1/20260305235950.avi"))}},
                {QStringLiteral("二号"),
                 QStringLiteral("2"),
                 {path(QStringLiteral("2/20260305235952.mp4")), path(QStringLiteral("2/20260306000010.avi"))}}};
    }
    void load() {
        page_->play(cameras());
        QTRY_VERIFY_WITH_TIMEOUT(session().isReady() && session().isSettled(), Waiting);
    }
    QPoint onAxis(Moment moment, int row = 0) const {
        const TimeAxis& axis = page_->axis();
        return {axis.lineLeft() + axis.scale().xOf(moment), 20 + row * 20 + 10};
    }

private slots:
    void initTestCase() {
        corvanta::applyStyle();
        for (const char* folder : {"1", "2"})
            QVERIFY(QDir(dir_.path()).mkdir(QLatin1String(folder)));
        QVERIFY(numbered::make(path(QStringLiteral("1/20260305235950.avi")), {"avi", "25", 200, 25, 2}));
        QVERIFY(numbered::make(path(QStringLiteral("2/20260305235952.mp4")), {"mp4", "25", 200, 50, 0, false, 1000}));
        QVERIFY(numbered::make(path(QStringLiteral("2/20260306000010.avi")), {"avi", "25", 100, 25, 0, false, 2000}));
    }
    void init() {
        page_ = std::make_unique<PlaybackPage>();
        page_->resize(900, 560);
        page_->show();
        QVERIFY(QTest::qWaitForWindowExposed(page_.get()));
        page_->activateWindow();
        QTRY_VERIFY(page_->isActiveWindow());
    }
    void cleanup() { page_.reset(); }

    void withoutRecordingsItSaysSo() {
        QVERIFY(page_->findChild<QLabel*>(QStringLiteral("playbackEmptyText"))->isVisible());
        QVERIFY(!page_->axis().isVisible());
        QVERIFY(!button("playPause").isEnabled());
        QVERIFY(button("openFiles").isEnabled());
        page_->play({{QStringLiteral("没有文件"), {}, {}}});
        QVERIFY(page_->session() == nullptr);
        for (const ActionEntry& entry : playbackActions()) {
            if (entry.needsRecordings)
                page_->carryOut(entry.action); // nothing happens
        }
    }

    void everyControlHasItsNames() {
        load();
        QSet<QString> names;
        for (const auto* tool : page_->findChildren<QToolButton*>()) {
            QVERIFY(!tool->objectName().isEmpty() && !tool->accessibleName().isEmpty());
            QVERIFY(!names.contains(tool->objectName()));
            names += tool->objectName();
        }
        QCOMPARE(page_->wall().tile(0).accessibleName(), QStringLiteral("回放：一号"));
        session().seek(at(0));
        QTRY_COMPARE_WITH_TIMEOUT(page_->wall().tile(1).accessibleName(), QStringLiteral("回放：二号，此时没有录像"),
                                  Waiting);
    }

    void picturesAreOnTheScreen() {
        load();
        session().seek(at(4.01));
        QTRY_COMPARE_WITH_TIMEOUT(shown(1), 1050, Waiting);
        const auto seen = [this](int camera, double x, double y) {
            const PlaybackTile& tile = page_->wall().tile(camera);
            const QRect place = tile.picturePlace();
            const QPoint spot = tile.mapToGlobal(
                place.topLeft() + QPoint(static_cast<int>(place.width() * x), static_cast<int>(place.height() * y)));
            return page_->screen()->grabWindow(0, spot.x(), spot.y(), 1, 1).toImage().pixelColor(0, 0);
        };
        // The bright square and the dark one beside the number.
        constexpr double row = 8.0 / numbered::Height;
        for (const int camera : {0, 1}) {
            QTRY_VERIFY_WITH_TIMEOUT(seen(camera, 232.0 / numbered::Width, row).lightness() > 200, Waiting);
            QTRY_VERIFY_WITH_TIMEOUT(seen(camera, 248.0 / numbered::Width, row).lightness() < 60, Waiting);
        }
    }

    void draggingSeeks() {
        load();
        TimeAxis& axis = page_->axis();
        QTest::mousePress(&axis, Qt::LeftButton, {}, onAxis(at(3)));
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), static_cast<int>((session().now() - at(0)).count() / 40000), Waiting);
        for (double second = 3; second <= 6; second += 0.1)
            QTest::mouseMove(&axis, onAxis(at(second)));
        QTest::mouseRelease(&axis, Qt::LeftButton, {}, onAxis(at(6)));
        const Moment now = session().now();
        QVERIFY(std::chrono::abs(now - at(6)) < std::chrono::milliseconds(100));
        QTRY_VERIFY_WITH_TIMEOUT(session().isSettled(), Waiting);
        QCOMPARE(shown(0), static_cast<int>((now - at(0)).count() / 40000));
        QCOMPARE(shown(1), 1000 + static_cast<int>((now - at(2)).count() / 40000));
        QTest::mouseMove(&axis, onAxis(at(1))); // the button is up
        QCOMPARE(session().now(), now);
    }

    void theWheelZooms() {
        load();
        TimeAxis& axis = page_->axis();
        const auto turn = [&axis](const QPoint& place, int notches, Qt::KeyboardModifiers modifiers) {
            QWheelEvent event(place, axis.mapToGlobal(place), {}, {0, notches * 120}, Qt::NoButton, modifiers,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&axis, &event);
        };
        const Span all = axis.scale().view();
        QVERIFY(all.begin < at(0) && all.end > at(24));
        const QPoint place = onAxis(at(12));
        turn(place, 3, Qt::NoModifier);
        QVERIFY(axis.scale().view().end - axis.scale().view().begin < (all.end - all.begin) * 0.6);
        QVERIFY(std::abs(onAxis(at(12)).x() - place.x()) <= 1);
        const Moment before = axis.scale().view().begin;
        turn(place, 2, Qt::ShiftModifier);
        QVERIFY(axis.scale().view().begin < before);
        turn(place, -20, Qt::NoModifier);
        QCOMPARE(axis.scale().view(), all);
        turn(place, 50, Qt::NoModifier);
        QCOMPARE(axis.scale().view().end - axis.scale().view().begin, std::chrono::microseconds(AxisScale::Shortest));
    }

    void keysDoWhatButtonsDo() {
        load();
        press(Qt::Key_Right);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 1, Waiting);
        click("frameForward");
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 2, Waiting);
        press(Qt::Key_Left);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 1, Waiting);
        click("frameBack");
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 0, Waiting);
        press(Qt::Key_PageDown);
        QCOMPARE(session().now(), at(20));
        QTRY_COMPARE_WITH_TIMEOUT(shown(1), 2000, Waiting);
        press(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(session().now(), at(10));
        press(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(session().now(), at(20));
        press(Qt::Key_End);
        QTRY_COMPARE_WITH_TIMEOUT(shown(1), 2099, Waiting);
        press(Qt::Key_Home);
        QCOMPARE(session().now(), at(0));
        press(Qt::Key_Up);
        QCOMPARE(session().speed(), 2.0);
        click("faster");
        QCOMPARE(page_->findChild<QLabel*>(QStringLiteral("playbackSpeed"))->text(), QStringLiteral("4×"));
        press(Qt::Key_Down);
        click("slower");
        QCOMPARE(session().speed(), 1.0);
        press(Qt::Key_Space);
        QVERIFY(session().isPlaying());
        QCOMPARE(button("playPause").accessibleName(), QStringLiteral("暂停"));
        QTRY_VERIFY_WITH_TIMEOUT(shown(0) > 5, Waiting);
        click("playPause");
        QVERIFY(!session().isPlaying());
    }

    void aFocusedButtonKeepsTheBlank() {
        load();
        button("faster").setFocus();
        press(Qt::Key_Space);
        QCOMPARE(session().speed(), 2.0);
        QVERIFY(!session().isPlaying());
    }

    void stepsFollowTheSelectedCamera() {
        load();
        session().seek(at(3));
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 75, Waiting);
        QTest::mouseClick(&page_->wall().tile(1), Qt::LeftButton, {}, QPoint(40, 10));
        QCOMPARE(page_->wall().selected(), 1);
        QVERIFY(page_->wall().tile(1).isSelected() && !page_->wall().tile(0).isSelected());
        press(Qt::Key_Right);
        QTRY_COMPARE_WITH_TIMEOUT(shown(1), 1026, Waiting);
        QTest::mouseClick(&page_->axis(), Qt::LeftButton, {}, QPoint(10, 30)); // its name
        QCOMPARE(page_->wall().selected(), 0);
        QTest::mouseDClick(&page_->wall().tile(0), Qt::LeftButton, {}, QPoint(40, 10));
        QVERIFY(page_->wall().isZoomed() && !page_->wall().tile(1).isVisible());
        press(Qt::Key_Return);
        QVERIFY(!page_->wall().isZoomed() && page_->wall().tile(1).isVisible());
    }

    void marksAndExports() {
        load();
        QSignalSpy messages(page_.get(), &PlaybackPage::sigMessage);
        click("exportClip");
        QCOMPARE(messages.last().first().toString(), QStringLiteral("请先标记要导出的开始和结束"));
        session().seek(at(1));
        click("markBegin");
        session().seek(at(3));
        press(Qt::Key_O);
        QCOMPARE(page_->markedBegin(), std::optional<Moment>(at(1)));
        QCOMPARE(page_->markedEnd(), std::optional<Moment>(at(3)));
        const QString clip = path(QStringLiteral("clip.mp4"));
        page_->exportTo(clip);
        QVERIFY2(messages.last().first().toString().contains(clip), qPrintable(messages.last().first().toString()));
        QCOMPARE(numbered::probe(clip, QStringLiteral("nb_read_frames")).toInt(), 50);
        page_->activateWindow(); // no window manager does it here
        QTRY_VERIFY_WITH_TIMEOUT(page_->isActiveWindow(), Waiting);
        session().seek(at(0.5)); // an end before the begin leaves only the end
        press(Qt::Key_O);
        QVERIFY(!page_->markedBegin() && page_->markedEnd());
        session().seek(at(0.1));
        press(Qt::Key_I);
        page_->wall().select(1);
        page_->exportTo(clip);
        QCOMPARE(messages.last().first().toString(), QStringLiteral("标记的范围内没有录像"));
    }

    void anExportThatFailsSaysWhy() {
        load();
        session().seek(at(1));
        press(Qt::Key_I);
        session().seek(at(2));
        press(Qt::Key_O);
        QTimer::singleShot(0, this, [] {
            auto* const dialog = qobject_cast<ExportDialog*>(QApplication::activeModalWidget());
            QTRY_VERIFY_WITH_TIMEOUT(dialog->findChild<QLabel*>(QStringLiteral("problem"))->isVisible(), Waiting);
            QVERIFY(
                dialog->findChild<QLabel*>(QStringLiteral("problem"))->text().contains(QStringLiteral("无法写入")));
            dialog->reject();
        });
        page_->exportTo(path(QStringLiteral("none/clip.avi")));
    }

    void savesWhatIsShown() {
        load();
        session().seek(at(4));
        QTRY_COMPARE_WITH_TIMEOUT(shown(1), 1050, Waiting);
        page_->wall().select(1);
        PlaybackCamera asked;
        QDateTime time;
        const QString file = path(QStringLiteral("shot.png"));
        page_->setSnapshotPath([&](const PlaybackCamera& camera, const QDateTime& when) {
            asked = camera;
            time = when;
            return file;
        });
        click("snapshot");
        QCOMPARE(asked.ipncId, QStringLiteral("2"));
        QCOMPARE(time, start_.addSecs(4));
        QCOMPARE(QImage(file).size(), QSize(numbered::Width, numbered::Height));
    }

    void aFileThatIsNoVideoIsNamed() {
        const QString bad = path(QStringLiteral("bad.avi"));
        QFile file(bad);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("text") == 4);
        file.close();
        QSignalSpy messages(page_.get(), &PlaybackPage::sigMessage);
        page_->play({{QStringLiteral("坏"), {}, {bad}}});
        QTRY_COMPARE_WITH_TIMEOUT(messages.count(), 1, Waiting);
        QVERIFY(messages.last().first().toString().contains(QStringLiteral("bad.avi：不是视频文件")));
        QVERIFY(page_->wall().tile(0).text().contains(QStringLiteral("bad.avi")));
        QVERIFY(!button("playPause").isEnabled());
    }

    void noMoreThanNineAreShown() {
        QVector<PlaybackCamera> many;
        for (int number = 0; number < 12; ++number)
            many += {QString::number(number), {}, cameras()[0].files};
        QSignalSpy messages(page_.get(), &PlaybackPage::sigMessage);
        page_->play(many);
        QCOMPARE(page_->wall().cameraCount(), 9);
        QCOMPARE(messages.count(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(session().isReady() && session().isSettled(), Waiting);
        for (int camera = 0; camera < 9; ++camera)
            QCOMPARE(shown(camera), 0);
        page_->play(cameras()); // another choice in the middle of it
        QTRY_VERIFY_WITH_TIMEOUT(session().isReady() && session().isSettled(), Waiting);
        QCOMPARE(page_->wall().cameraCount(), 2);
        page_->close();
        QVERIFY(page_->session() == nullptr);
        QVERIFY(page_->findChild<QLabel*>(QStringLiteral("playbackEmptyText"))->isVisible());
    }

    void nothingPlaysWhileNobodySeesIt() {
        load();
        press(Qt::Key_Space);
        QVERIFY(session().isPlaying());
        page_->hide();
        QVERIFY(!session().isPlaying());
    }

    void everythingFitsIntoASmallWindow() {
        page_->resize(456, 300);
        load();
        QTRY_COMPARE(page_->size(), QSize(456, 300));
        for (const auto* tool : page_->findChildren<QToolButton*>()) {
            const QRect place(tool->mapTo(page_.get(), QPoint()), tool->size());
            QVERIFY2(page_->rect().contains(place), qPrintable(tool->objectName()));
        }
        QVERIFY2(page_->wall().height() > 100, qPrintable(QString::number(page_->wall().height())));
    }

    void ticksAreRoundTimes_data() {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("labels");
        QTest::newRow("seconds") << 20 << "23:59:50 23:59:55 03-06 00:00:05";
        QTest::newRow("hours") << 4 * 3600 << "03-06 01:00 02:00 03:00";
        QTest::newRow("days") << 4 * 86400 << "03-06 03-07 03-08 03-09";
    }
    void ticksAreRoundTimes() {
        QFETCH(int, seconds);
        QFETCH(QString, labels);
        const AxisScale scale({at(0), at(seconds)}, 400);
        QStringList found;
        for (const AxisScale::Tick& tick : scale.ticks(72)) {
            found += tick.label;
            QCOMPARE(tick.isMidnight, tick.label.startsWith(QStringLiteral("03-0")));
        }
        QCOMPARE(found.join(QLatin1Char(' ')), labels);
    }
};

QTEST_MAIN(tst_PlaybackPage)
#include "tst_PlaybackPage.moc"
