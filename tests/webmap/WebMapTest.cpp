#include "webmap/WebMapTest.h"

#include "map/web/MapPage.h"

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>

using namespace corvanta::map;

namespace {

constexpr int Patience = 60000; // ms, on a machine that is busy

} // namespace

MapMarker makeMarker(const QString& name, double lat, double lng) {
    MapMarker marker;
    marker.name = name;
    marker.ipncId = QStringLiteral("device");
    marker.lat = lat;
    marker.lng = lng;
    return marker;
}

bool WebMapTest::open(const WebMapOptions& options, const QList<MapMarker>& markers) {
    view_ = std::make_unique<MyWebEngineView>(options);
    QSignalSpy ready(view_.get(), &MyWebEngineView::sigReady);
    view_->setMarkers(markers);
    view_->resize(800, 600);
    view_->show();
    // What was told is on its way when the page is ready, and not there yet.
    const QString isThere = QStringLiteral("baseMap.hasShapes() && marks.length === %1").arg(markers.size());
    return (view_->isReady() || ready.wait(Patience)) && becomes(isThere);
}

QVariant WebMapTest::ask(const QString& script) const {
    QVariant answer;
    bool isAnswered = false;
    QEventLoop loop;
    view_->page().runJavaScript(script, [&](const QVariant& value) {
        answer = value;
        isAnswered = true;
        loop.quit();
    });
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
    if (!isAnswered)
        loop.exec();
    return answer;
}

bool WebMapTest::becomes(const QString& script) const {
    return QTest::qWaitFor([this, &script] { return ask(script).toBool(); }, Patience);
}

QWidget* WebMapTest::input() const {
    return view_->findChild<QWebEngineView*>()->focusProxy();
}

void WebMapTest::doubleClick(const QPoint& at) const {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                            QEvent::MouseButtonRelease}) {
        const bool isDown = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, input()->mapToGlobal(at), Qt::LeftButton, isDown ? Qt::LeftButton : Qt::NoButton,
                          {});
        QApplication::sendEvent(input(), &event);
    }
}

QPoint WebMapTest::middleOf(const QString& selector) const {
    const QVariantList middle =
        ask(QStringLiteral("(() => { const found = document.querySelector('%1'); if (!found) return [-1, -1];"
                           "const box = found.getBoundingClientRect();"
                           "return [box.left + box.width / 2, box.top + box.height / 2]; })()")
                .arg(selector))
            .toList();
    return {middle.value(0).toInt(), middle.value(1).toInt()};
}
