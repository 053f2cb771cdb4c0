/// How many labels a second an online map brings into its page, a hundred markers in view: through the view, and by a
/// call of the browser for each text. Prints both rates.
#include "map/web/MapPage.h"
#include "map/web/MyWebEngineView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <functional>

using namespace corvanta::map;

namespace {

constexpr int Markers = 100;
constexpr int Rounds = 200;     // a round tells every marker a new text
constexpr int Patience = 60000; // ms

QList<MapMarker> makeMarkers() {
    QList<MapMarker> markers;
    for (int i = 0; i < Markers; ++i) {
        MapMarker marker;
        marker.name = QStringLiteral("传感器 ") + QString::number(i);
        marker.lat = 20 + i / 10 * 2;
        marker.lng = 90 + i % 10 * 4;
        markers += marker;
    }
    return markers;
}

QStringList linesOf(int marker, int round) {
    return {QStringLiteral("传感器 ") + QString::number(marker),
            QStringLiteral("温度 ") + QString::number(round) + QStringLiteral(" ℃"), QStringLiteral("时间:10:00:00")};
}

QVariant ask(const MyWebEngineView& view, const QString& script) {
    QVariant answer;
    QEventLoop loop;
    view.page().runJavaScript(script, [&](const QVariant& value) {
        answer = value;
        loop.quit();
    });
    loop.exec();
    return answer;
}

/// Updates a second; `tell` brings one text on its way. A round ends when the page shows its last text.
double rate(const MyWebEngineView& view, int first, const std::function<void(int marker, int round)>& tell) {
    QElapsedTimer timer;
    timer.start();
    for (int round = first; round < first + Rounds; ++round) {
        for (int marker = 0; marker < Markers; ++marker)
            tell(marker, round);
        QCoreApplication::processEvents();
        const QString last = ScriptCall::quoted(linesOf(Markers - 1, round)[1]);
        const QString shown = QStringLiteral("marks[99].text.children[1].textContent === ") + last;
        while (!ask(view, shown).toBool())
            QCoreApplication::processEvents();
    }
    return Markers * Rounds / (double(timer.nsecsElapsed()) / 1e9);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    const QApplication application(argc, argv);
    MyWebEngineView view({});
    view.setMarkers(makeMarkers());
    view.resize(1280, 720);
    view.show();
    QEventLoop loading;
    QObject::connect(&view, &MyWebEngineView::sigReady, &loading, &QEventLoop::quit);
    QTimer::singleShot(Patience, &loading, [] {
        std::fputs("the page does not come\n", stderr);
        std::exit(1);
    });
    loading.exec();
    while (!ask(view, QStringLiteral("baseMap.hasShapes() && marks.length === 100")).toBool())
        QCoreApplication::processEvents();
    const auto byView = [&view](int marker, int round) {
        view.setMarkerText(marker, linesOf(marker, round));
    };
    const auto byCalls = [&view](int marker, int round) {
        const QString label = linesOf(marker, round).join(QStringLiteral("<br />"));
        view.page().runJavaScript(ScriptCall(QLatin1String("UpdateMarkText")).number(marker).text(label).script());
    };
    const double own = rate(view, 0, byView);
    const double plain = rate(view, Rounds, byCalls);
    std::printf("%f %f\n", own, plain);
    return 0;
}
