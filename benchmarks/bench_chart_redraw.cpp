/// A zoom step of a chart with a million samples: ours, which thins them to the pixels, against the chart library
/// with all points given to its series. Both draw into a picture; medians.
#include "sensor/ui/ChartPlot.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QtCharts/QChart>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace sensor = corvanta::sensor;

namespace {

constexpr int Count = 1000000;
constexpr double Begin = 1700000000; // epoch, s
constexpr double Step = 0.007;       // s; all of it within the level of single samples
constexpr int Width = 900;           // px
constexpr int Height = 500;

double valueAt(int i) {
    return std::sin(i * 0.0007) * 40 + (i % 1000 * 7919 % 1000) * 0.01;
}

/// `show` draws the part of the span, from the middle on, that it is told.
double median(int times, const std::function<void(double part)>& show) {
    std::vector<double> milliseconds;
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        show(1.0 - 0.02 * i);
        milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    return milliseconds[milliseconds.size() / 2];
}

double ours() {
    sensor::Samples samples;
    for (int i = 0; i < Count; ++i)
        samples.push_back({Begin + i * Step, valueAt(i), valueAt(i), valueAt(i)});
    sensor::ChartPlot plot([&samples](int, double) -> const sensor::Samples& { return samples; });
    plot.resize(Width, Height);
    plot.setCurves({{1, QStringLiteral("a"), QStringLiteral("V"), {}}});
    plot.grab();
    const double span = Count * Step;
    return median(15, [&](double part) {
        plot.setRange(Begin + span * (1 - part) / 2, Begin + span * (1 + part) / 2);
        plot.grab();
    });
}

double theirs() {
    QtCharts::QChartView view;
    view.setRenderHint(QPainter::Antialiasing);
    auto* const series = new QtCharts::QLineSeries;
    QVector<QPointF> points;
    for (int i = 0; i < Count; ++i)
        points += QPointF((Begin + i * Step) * 1000, valueAt(i));
    series->replace(points);
    view.chart()->addSeries(series);
    view.chart()->legend()->hide();
    auto* const time = new QtCharts::QValueAxis;
    auto* const value = new QtCharts::QValueAxis;
    value->setRange(-60, 60);
    view.chart()->addAxis(time, Qt::AlignBottom);
    view.chart()->addAxis(value, Qt::AlignLeft);
    series->attachAxis(time);
    series->attachAxis(value);
    view.resize(Width, Height);
    const double span = Count * Step;
    return median(3, [&](double part) {
        time->setRange((Begin + span * (1 - part) / 2) * 1000, (Begin + span * (1 + part) / 2) * 1000);
        view.grab();
    });
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const double own = ours();
    const double whole = theirs();
    std::printf("chart_redraw %.1f ms vs all_points %.1f ratio %.4f\n", own, whole, own / whole);
    return 0;
}
