#include "map/ui/MapView.h"
#include "map/ui/SensorMimeData.h"
#include "map/ui/WebMapPlugin.h"

#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QTest>

using namespace corvanta::map;

/// The plugin as the program meets it: by its file and the interfaces, without its code.
class tst_WebMapPlugin : public QObject {
    Q_OBJECT

private slots:
    void aViewComesOutOfThePlugin();
};

namespace {

bool isBrowserLoaded() {
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libQt5WebEngineCore");
}

} // namespace

void tst_WebMapPlugin::aViewComesOutOfThePlugin() {
    QVERIFY(!isBrowserLoaded());
    QPluginLoader loader(QStringLiteral(PLUGIN));
    auto* const factory = qobject_cast<WebMapFactory*>(loader.instance());
    QVERIFY2(factory != nullptr, qPrintable(loader.errorString()));
    QVERIFY(isBrowserLoaded());
    QWidget window;
    window.resize(640, 480);
    MapView* const view = factory->make({}, &window);
    QVERIFY(view != nullptr);
    view->resize(640, 480);
    window.show();
    QSignalSpy dropped(view, &MapView::sigDropped);
    QWidget* const web = view->findChild<QWidget*>(QStringLiteral("mapWebView"));
    const SensorMimeData data(QStringLiteral("device"), QString());
    // Until the page is there, drops fall on nothing.
    const auto drop = [&] {
        QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(web, &enter);
        QDropEvent event(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(web, &event);
        return dropped.wait(100);
    };
    QVERIFY(QTest::qWaitFor(drop, 60000));
    QCOMPARE(dropped[0][0].toString(), QStringLiteral("device"));
}

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QApplication application(argc, argv);
    tst_WebMapPlugin test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_WebMapPlugin.moc"
