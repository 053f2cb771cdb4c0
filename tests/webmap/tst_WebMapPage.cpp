#include "map/ui/SensorMimeData.h"
#include "map/web/MapPage.h"
#include "support/OtherLanguage.h"
#include "webmap/WebMapTest.h"

#include <QApplication>
#include <QDropEvent>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineView>

#include <csignal>

using namespace corvanta::map;

/// The online map in a real browser: what the page shows is asked of the page, what the user does comes as input
/// events.
class tst_WebMapPage : public WebMapTest {
    Q_OBJECT

private slots:
    void markersStandWhereTheyAre();
    void textsAndIconsAreUpdated();
    void labelsShowAlwaysOrUnderTheMouse();
    void crowdedLabelsFold();
    void aSensorIsDropped();
    void aMarkerIsCarriedAndPutBack();
    void markersAreDeleted();
    void alarmsComeAndGo();
    void clicksAndMenusAreTold();
    void theLanguageChanges();
    void theMapIsZoomed();
    void textsStayTexts_data();
    void textsStayTexts();
    void aPageThatEndedComesBack();
    void aPageThatIsNotThereIsTold();
    void theViewEndsWhileThePageIsBusy();
    void cleanup() { WebMapTest::cleanup(); }

private:
    bool openTwo() {
        return open(
            {}, {makeMarker(QStringLiteral("北京"), 39.9, 116.4), makeMarker(QStringLiteral("上海"), 31.2, 121.5)});
    }
    /// Opens a menu where a selector finds something, and chooses an entry by its text.
    bool choose(const QString& selector, const QString& entry);
    bool isAt(int index, double lat, double lng) {
        return becomes(QStringLiteral("marks[%1] && marks[%1].layer.getLatLng().distanceTo([%2, %3]) < 1")
                           .arg(index)
                           .arg(lat, 0, 'f', 9)
                           .arg(lng, 0, 'f', 9));
    }
    bool hasText(int index, const QString& text) {
        return QTest::qWaitFor([&] { return ask(QStringLiteral("marks[%1].text.textContent").arg(index)) == text; });
    }
};

bool tst_WebMapPage::choose(const QString& selector, const QString& entry) {
    const QPoint at = middleOf(selector);
    QTest::mouseMove(input(), at);
    QTest::mouseClick(input(), Qt::RightButton, {}, at);
    const QString find = QStringLiteral("[...document.querySelectorAll('.menu > li')].findIndex("
                                        "(item) => item.textContent === '%1')")
                             .arg(entry);
    if (!becomes(find + QStringLiteral(" >= 0")))
        return false;
    const int index = ask(find).toInt();
    const QPoint item = middleOf(QStringLiteral(".menu > li:nth-child(%1)").arg(index + 1));
    QTest::mouseMove(input(), item);
    QTest::mouseClick(input(), Qt::LeftButton, {}, item);
    return becomes(QStringLiteral("document.querySelector('.menu') === null"));
}

void tst_WebMapPage::markersStandWhereTheyAre() {
    QVERIFY(openTwo());
    QVERIFY(isAt(0, 39.9, 116.4));
    QVERIFY(isAt(1, 31.2, 121.5));
    QVERIFY(hasText(1, QStringLiteral("上海")));
    // Beijing is seen to the north-west of Shanghai, and both are in view.
    const QString seen =
        QStringLiteral("(() => { const [a, b] = marks.map((mark) => mark.element.getBoundingClientRect());"
                       "return a.left < b.left && a.top < b.top && a.left > 0 && a.top > 0 &&"
                       "b.right < innerWidth && b.bottom < innerHeight; })()");
    QVERIFY(becomes(seen));
    view_->setMarkers({makeMarker(QStringLiteral("悉尼"), -33.87, 151.21)});
    QVERIFY(becomes(QStringLiteral("marks.length === 1 && document.querySelectorAll('.mark').length === 1")));
    QVERIFY(isAt(0, -33.87, 151.21));
    view_->fitMarkers();
    QVERIFY(becomes(QStringLiteral("map.getBounds().contains([-33.87, 151.21])")));
}

void tst_WebMapPage::textsAndIconsAreUpdated() {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("icon.png"));
    QImage(QSize(300, 200), QImage::Format_RGB32).save(path);
    MapMarker marker = makeMarker(QStringLiteral("水泵"), 30, 110);
    marker.pid = QStringLiteral("7");
    marker.iconPath = folder.filePath(QStringLiteral("gone.png"));
    QVERIFY(open({}, {marker}));
    QCOMPARE(ask(QStringLiteral("marks[0].icon.getAttribute('src')")).toString(), QStringLiteral("sensor.svg"));
    QVERIFY(becomes(QStringLiteral("marks[0].icon.naturalWidth > 0")));
    view_->setMarkerText(
        0, {QStringLiteral("水泵"), QStringLiteral("压力 3.2 MPa"), QStringLiteral("时间:2024-01-02 03:04:05")});
    QVERIFY(becomes(QStringLiteral("marks[0].text.children.length === 3 && "
                                   "marks[0].text.children[1].textContent === '压力 3.2 MPa'")));
    marker.iconPath = path;
    view_->moveMarker(0, marker);
    QVERIFY(becomes(QStringLiteral("marks[0].icon.naturalWidth === 64"))); // no larger than it is shown
}

void tst_WebMapPage::labelsShowAlwaysOrUnderTheMouse() {
    MapMarker shy = makeMarker(QStringLiteral("b"), 0, 30);
    shy.showMode = ShowMode::MouseIn;
    QVERIFY(open({}, {makeMarker(QStringLiteral("a"), 0, 0), shy}));
    const QString visibility = QStringLiteral("getComputedStyle(marks[%1].text).visibility === '%2'");
    QTest::mouseMove(input(), QPoint(5, 5));
    QVERIFY(becomes(visibility.arg(QString::number(0), QStringLiteral("visible"))));
    QVERIFY(becomes(visibility.arg(QString::number(1), QStringLiteral("hidden"))));
    QTest::mouseMove(input(), middleOf(QStringLiteral(".mark:not(.always)")));
    QVERIFY(becomes(visibility.arg(QString::number(1), QStringLiteral("visible"))));
    shy.showMode = ShowMode::Always;
    QTest::mouseMove(input(), QPoint(5, 5));
    view_->moveMarker(1, shy);
    QVERIFY(becomes(visibility.arg(QString::number(1), QStringLiteral("visible"))));
}

// Values that would lie over another marker are folded away until there is room, or somebody looks.
void tst_WebMapPage::crowdedLabelsFold() {
    QVERIFY(open({}, {makeMarker(QStringLiteral("a"), 39.9, 116.4), makeMarker(QStringLiteral("b"), 39, 117),
                      makeMarker(QStringLiteral("c"), -33, 18)}));
    for (int i = 0; i < 3; ++i)
        view_->setMarkerText(
            i, {QStringLiteral("name"), QStringLiteral("压力: 3.2 MPa"), QStringLiteral("时间:2024-01-02 03:04:05")});
    const QString folded = QStringLiteral(
        "marks.map((mark) => mark.element.classList.contains('folded') ? 'f' : '-').join('') === '%1'");
    const QString shown = QStringLiteral("getComputedStyle(marks[1].text.children[1]).display !== 'none'");
    QTest::mouseMove(input(), QPoint(5, 5));
    view_->fitMarkers();
    QVERIFY(becomes(folded.arg(QStringLiteral("ff-"))));
    QVERIFY(!ask(shown).toBool());
    QTest::mouseMove(input(), middleOf(QStringLiteral(".mark"))); // the southern one lies on top
    QVERIFY(becomes(shown));
    QTest::mouseMove(input(), QPoint(5, 5));
    QVERIFY(becomes(QStringLiteral("!(%1)").arg(shown)));
    ask(QStringLiteral("map.setView([39.5, 116.7], 11, { animate: false })"));
    QVERIFY(becomes(folded.arg(QStringLiteral("---"))));
    ask(QStringLiteral("map.setView([39.5, 116.7], 2, { animate: false })"));
    QVERIFY(becomes(folded.arg(QStringLiteral("ff-"))));
    view_->removeMarker(1);
    QVERIFY(becomes(folded.arg(QStringLiteral("--"))));
}

void tst_WebMapPage::aSensorIsDropped() {
    QVERIFY(open());
    QSignalSpy dropped(view_.get(), &MapView::sigDropped);
    const QPoint at(300, 200);
    const QVariantList place = ask(QStringLiteral("(() => { const p = map.containerPointToLatLng([300, 200]);"
                                                  "return [p.lat, p.lng]; })()"))
                                   .toList();
    const auto drop = [this, at](const QMimeData& data) {
        auto* const web = view_->findChild<QWebEngineView*>();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(web, &enter);
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(web, &event);
        return enter.isAccepted() && event.isAccepted();
    };
    QMimeData file;
    file.setUrls({QUrl(QStringLiteral("file:///etc/passwd"))});
    QVERIFY(!drop(file));
    QVERIFY(drop(SensorMimeData(QStringLiteral("it's<b>"), QStringLiteral("12"))));
    QTRY_COMPARE(dropped.size(), 1);
    QCOMPARE(dropped[0][0].toString(), QStringLiteral("it's<b>"));
    QCOMPARE(dropped[0][1].toString(), QStringLiteral("12"));
    const auto marker = dropped[0][2].value<MapMarker>();
    QVERIFY(qAbs(marker.lat - place[0].toDouble()) < 1e-9);
    QVERIFY(qAbs(marker.lng - place[1].toDouble()) < 1e-9);
}

void tst_WebMapPage::aMarkerIsCarriedAndPutBack() {
    QVERIFY(openTwo());
    QSignalSpy moved(view_.get(), &MapView::sigMarkerMoved);
    const QPoint to(200, 150);
    QVERIFY(choose(QStringLiteral(".mark"), QStringLiteral("拖动标记")));
    QTest::mouseMove(input(), QPoint(250, 250));
    QVERIFY(becomes(QStringLiteral("carry.mark === marks[0] && map.latLngToContainerPoint(marks[0].layer.getLatLng())"
                                   ".distanceTo([250, 250]) < 3")));
    QTest::keyClick(input(), Qt::Key_Escape);
    QVERIFY(isAt(0, 39.9, 116.4));
    QCOMPARE(moved.size(), 0);

    view_->beginDrag(0);
    QVERIFY(becomes(QStringLiteral("carry.mark === marks[0]")));
    QTest::mouseMove(input(), to);
    QTest::mouseClick(input(), Qt::LeftButton, {}, to);
    QTRY_COMPARE(moved.size(), 1);
    QCOMPARE(moved[0][0].toInt(), 0);
    const auto place = moved[0][1].value<MapMarker>();
    const QVariantList expected =
        ask(QStringLiteral("(() => { const p = map.containerPointToLatLng([200, 150]); return [p.lat, p.lng]; })()"))
            .toList();
    QVERIFY(qAbs(place.lat - expected[0].toDouble()) < 1e-6);
    QVERIFY(qAbs(place.lng - expected[1].toDouble()) < 1e-6);
    QVERIFY(isAt(0, place.lat, place.lng));
    view_->moveMarker(0, makeMarker(QStringLiteral("北京"), 39.9, 116.4)); // refused
    QVERIFY(isAt(0, 39.9, 116.4));
}

void tst_WebMapPage::markersAreDeleted() {
    QVERIFY(openTwo());
    QSignalSpy wanted(view_.get(), &MapView::sigDeleteMarker);
    QVERIFY(choose(QStringLiteral(".mark"), QStringLiteral("删除标记")));
    QTRY_COMPARE(wanted.size(), 1);
    QCOMPARE(wanted[0][0].toInt(), 0);
    QCOMPARE(ask(QStringLiteral("marks.length")).toInt(), 2); // not before it is confirmed
    view_->setMarkerText(1, {QStringLiteral("前")});
    view_->removeMarker(0);
    view_->setMarkerText(0, {QStringLiteral("后")}); // what was 1
    view_->removeMarker(7);
    QVERIFY(becomes(QStringLiteral("marks.length === 1")));
    QVERIFY(hasText(0, QStringLiteral("后")));
    QVERIFY(isAt(0, 31.2, 121.5));
    view_->setEditable(false);
    QVERIFY(becomes(QStringLiteral("!view.isEditable"))); // input overtakes scripts
    QTest::mouseClick(input(), Qt::RightButton, {}, middleOf(QStringLiteral(".mark")));
    QVERIFY(
        becomes(QStringLiteral("[...document.querySelectorAll('.menu > li')].map((item) => item.textContent).join()"
                               "=== '清除报警'")));
}

void tst_WebMapPage::alarmsComeAndGo() {
    QVERIFY(openTwo());
    const QString source = QStringLiteral("(marks[1].alarm || document.body).getAttribute('src') === %1");
    const auto gif = [](const char* name) {
        return QStringLiteral("'qrc:///style/img/%1'").arg(QLatin1String(name));
    };
    view_->showAlarm(1, 1);
    QVERIFY(becomes(source.arg(gif("onelevlealarm.gif"))));
    view_->showAlarm(1, 4);
    QVERIFY(becomes(source.arg(gif("otheralarm.gif"))));
    QCOMPARE(ask(QStringLiteral("document.querySelectorAll('.alarm').length")).toInt(), 1);
    QSignalSpy clear(view_.get(), &MapView::sigClearAlarm);
    QVERIFY(choose(QStringLiteral(".leaflet-marker-pane > :nth-child(2) .mark"), QStringLiteral("清除报警")));
    QTRY_COMPARE(clear.size(), 1);
    QCOMPARE(clear[0][0].toInt(), 1);
    view_->clearAlarm(1);
    QVERIFY(becomes(source.arg(QStringLiteral("null"))));
    view_->showAlarm(1, 2);
    QVERIFY(becomes(source.arg(gif("twolevlealarm.gif"))));
    view_->showAlarm(1, 5);
    QVERIFY(becomes(source.arg(QStringLiteral("null"))));
}

void tst_WebMapPage::clicksAndMenusAreTold() {
    QVERIFY(openTwo());
    QSignalSpy activated(view_.get(), &MapView::sigMarkerActivated);
    QSignalSpy empty(view_.get(), &MapView::sigDoubleClicked);
    QSignalSpy edited(view_.get(), &MapView::sigEditMarker);
    QSignalSpy dialog(view_.get(), &MapView::sigOpenDialog);
    doubleClick(middleOf(QStringLiteral(".mark")));
    QTRY_COMPARE(activated.size(), 1);
    QTest::keyClick(input(), Qt::Key_Return); // it has the focus
    QTRY_COMPARE(activated.size(), 2);
    QCOMPARE(empty.size(), 0);
    doubleClick(QPoint(400, 20));
    QTRY_COMPARE(empty.size(), 1);
    QVERIFY(choose(QStringLiteral(".mark"), QStringLiteral("设置标记参数")));
    QTRY_COMPARE(edited.size(), 1);
    QVERIFY(choose(QStringLiteral(".leaflet-control-scale"), QStringLiteral("添加地图")));
    QTRY_COMPARE(dialog.size(), 1);
    QCOMPARE(dialog[0][0].toString(), QStringLiteral("添加地图"));
    ask(QStringLiteral("map.setView([0, 0], 9, { animate: false })"));
    QVERIFY(choose(QStringLiteral(".leaflet-control-scale"), QStringLiteral("自适应标记点")));
    QVERIFY(becomes(
        QStringLiteral("map.getBounds().contains([39.9, 116.4]) && map.getBounds().contains([31.2, 121.5])")));
    QCOMPARE(dialog.size(), 1);
    view_->showMarker(1);
    QVERIFY(becomes(QStringLiteral("map.getCenter().distanceTo([31.2, 121.5]) < 10000 &&"
                                   "marks[1].element.classList.contains('shown')")));
}

void tst_WebMapPage::theLanguageChanges() {
    QVERIFY(openTwo());
    const QString speaks = QStringLiteral("document.title === '%1' && document.documentElement.lang === '%2' &&"
                                          "map.getContainer().getAttribute('aria-label') === '%1' &&"
                                          "document.querySelector('.leaflet-control-zoom-in').title === '%3'");
    QVERIFY(becomes(speaks.arg(QStringLiteral("在线地图"), QStringLiteral("zh-CN"), QStringLiteral("放大"))));
    auto other = std::make_unique<OtherLanguage>();
    QVERIFY(becomes(speaks.arg(QStringLiteral("*在线地图"), QStringLiteral("*zh-CN"), QStringLiteral("*放大"))));
    QCOMPARE(view_->accessibleName(), QStringLiteral("*在线地图"));
    QSignalSpy dialog(view_.get(), &MapView::sigOpenDialog);
    QVERIFY(choose(QStringLiteral(".leaflet-control-scale"), QStringLiteral("*添加地图")));
    QTRY_COMPARE(dialog.size(), 1);
    QCOMPARE(dialog[0][0].toString(), QStringLiteral("添加地图")); // a name, whatever is shown
    view_->reload();
    QVERIFY(becomes(speaks.arg(QStringLiteral("*在线地图"), QStringLiteral("*zh-CN"), QStringLiteral("*放大"))));
    other.reset();
    QVERIFY(becomes(speaks.arg(QStringLiteral("在线地图"), QStringLiteral("zh-CN"), QStringLiteral("放大"))));
}

void tst_WebMapPage::theMapIsZoomed() {
    QVERIFY(openTwo());
    const int before = ask(QStringLiteral("map.getZoom()")).toInt();
    view_->zoomIn();
    QVERIFY(becomes(QStringLiteral("map.getZoom() === %1").arg(before + 1)));
    view_->zoomOut();
    QVERIFY(becomes(QStringLiteral("map.getZoom() === %1").arg(before)));
}

void tst_WebMapPage::textsStayTexts_data() {
    QTest::addColumn<QString>("name");
    const auto row = [](const char* what, const QString& name) {
        QTest::newRow(what) << name;
    };
    row("quotes", QStringLiteral("'\"`'); window.ran = 1; ('"));
    row("backslashes", QStringLiteral("\\\\'\\"));
    row("line ends", QStringLiteral("a\nb\r\nc\td") + QChar(0x2028) + QChar(0x2029) + QChar(0x85));
    row("nul", QStringLiteral("a") + QChar(0) + QStringLiteral("b") + QChar(0x1b));
    row("end of a script", QStringLiteral("</script><script>window.ran = 1</script>"));
    row("an image", QStringLiteral("<img src=x onerror=\"window.ran = 1\"><svg onload='window.ran = 1'>"));
    row("references", QStringLiteral("&lt;b&gt; &#39; <b>fett</b>"));
    row("places of arguments", QStringLiteral("%1 %2 %% %L3 ${window.ran = 1} {0}"));
    row("bidi marks",
        QChar(0x202e) + QStringLiteral("gpj.exe") + QChar(0x2066) + QChar(0x200f) + QStringLiteral("שלום"));
    row("a half of a pair", QString(QChar(0xd83d)) + QStringLiteral("x"));
    row("a whole pair", QString::fromUtf8("\xf0\x9f\x93\xb7"));
    row("long", QString(10000, QLatin1Char('\'')));
}

void tst_WebMapPage::textsStayTexts() {
    QFETCH(const QString, name);
    QVERIFY(open({}, {makeMarker(name, 10, 20), makeMarker(QStringLiteral("next"), 11, 21)}));
    // As numbers, for halves of pairs do not come through every coding on the way back.
    const QString units = QStringLiteral("Array.from({ length: %1.length }, (_, i) => %1.charCodeAt(i)).join()");
    QStringList expected;
    for (const QChar c : name)
        expected += QString::number(c.unicode());
    const auto isShown = [&] {
        return ask(units.arg(QStringLiteral("marks[0].text.children[0].textContent"))).toString() ==
               expected.join(QLatin1Char(','));
    };
    QTRY_VERIFY(isShown());
    view_->setMarkerText(0, {QStringLiteral("other")});
    QVERIFY(hasText(0, QStringLiteral("other")));
    view_->setMarkerText(0, {name, name});
    QTRY_VERIFY(isShown());
    QVERIFY(becomes(QStringLiteral(
        "marks[0].text.children.length === 2 && marks[0].text.querySelector(':scope > div > *') === null")));
    QVERIFY(hasText(1, QStringLiteral("next")));
    QVERIFY(!ask(QStringLiteral("window.ran")).isValid());
}

void tst_WebMapPage::aPageThatEndedComesBack() {
    QVERIFY(openTwo());
    view_->setMarkerText(0, {QStringLiteral("北京"), QStringLiteral("温度 21 ℃")});
    view_->showAlarm(1, 3);
    QVERIFY(becomes(QStringLiteral("marks[1].alarm !== null")));
    QSignalSpy failed(view_.get(), &MapView::sigFailed);
    const qint64 pid = view_->page().renderProcessPid();
    QVERIFY(pid > 0);
    QCOMPARE(::kill(pid_t(pid), SIGKILL), 0);
    QTRY_COMPARE(failed.size(), 1);
    auto* const reload = view_->findChild<QPushButton*>(QStringLiteral("mapReload"));
    QTRY_VERIFY(reload->isVisible());
    QCOMPARE(view_->findChild<QLabel*>(QStringLiteral("mapFailureReason"))->text(), QStringLiteral("地图页面已停止"));
    QCOMPARE(reload->text(), QStringLiteral("重新加载"));
    view_->moveMarker(0, makeMarker(QStringLiteral("北京"), 40.5, 117)); // meanwhile
    view_->removeMarker(5);
    QSignalSpy ready(view_.get(), &MyWebEngineView::sigReady);
    QTest::mouseClick(reload, Qt::LeftButton);
    QVERIFY(ready.wait(60000));
    QVERIFY(!reload->isVisible());
    QVERIFY(becomes(QStringLiteral("marks.length === 2 && marks[1].alarm !== null")));
    QVERIFY(isAt(0, 40.5, 117));
    QVERIFY(hasText(0, QStringLiteral("北京温度 21 ℃")));
    QSignalSpy dialog(view_.get(), &MapView::sigOpenDialog); // the bridge stands again, too
    QVERIFY(choose(QStringLiteral(".leaflet-control-scale"), QStringLiteral("管理地图")));
    QTRY_COMPARE(dialog.size(), 1);
}

// What waits behind a call that the page has not answered goes nowhere.
void tst_WebMapPage::theViewEndsWhileThePageIsBusy() {
    for (int i = 0; i < 3; ++i) {
        QVERIFY(openTwo());
        view_->setMarkerText(0, {QStringLiteral("a")});
        QCoreApplication::processEvents(); // it is sent
        view_->setMarkerText(0, {QStringLiteral("b")});
        view_.reset();
    }
}

void tst_WebMapPage::aPageThatIsNotThereIsTold() {
    QVERIFY(openTwo());
    QSignalSpy failed(view_.get(), &MapView::sigFailed);
    Q_CLEANUP_RESOURCE(webmap);
    view_->reload();
    QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, 60000);
    Q_INIT_RESOURCE(webmap);
    auto* const reload = view_->findChild<QPushButton*>(QStringLiteral("mapReload"));
    QTRY_VERIFY(reload->isVisible());
    QCOMPARE(view_->findChild<QLabel*>(QStringLiteral("mapFailureReason"))->text(),
             QStringLiteral("地图页面加载失败"));
    QTest::mouseClick(reload, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(view_->isReady(), 60000);
    QVERIFY(becomes(QStringLiteral("marks.length === 2")));
}

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QApplication application(argc, argv);
    tst_WebMapPage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_WebMapPage.moc"
