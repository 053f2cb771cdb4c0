/// A thousand values a second for a hundred labels that are seen on a map: the share of a core that the program takes
/// for them, ours against a label of the toolkit for each marker that is set with every value.
#include "app/AppManager.h"
#include "base/ui/Style.h"
#include "map/ui/ElectronMapwidget.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/MapCanvas.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>
#include <functional>
#include <vector>

namespace map = corvanta::map;

namespace {

constexpr int Markers = 100;
constexpr int Inputs = 3;        // of a marker
constexpr int UpdatesABeat = 20; // every 20 ms
constexpr int Beat = 20;         // ms
constexpr int Seconds = 10;

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

int pidOf(int marker, int input) {
    return 1000 + marker * 10 + input;
}

std::string text(const QJsonObject& object) {
    return QJsonDocument(object).toJson().toStdString();
}

void giveDocuments(FakeSdk& sdk) {
    QJsonArray boards;
    QJsonArray markers;
    for (int i = 0; i < Markers; ++i) {
        QJsonArray inputs;
        for (int k = 0; k < Inputs; ++k)
            inputs += QJsonObject{{"pid", pidOf(i, k)}, {"ifpid", i + 1}, {"name", "温度"}, {"unit", "℃"}};
        boards += QJsonObject{{"pid", i + 1}, {"name", "b"}, {"input", inputs}};
        const QJsonObject point{{"x", QString::number((i % 10 + 0.5) / 10)},
                                {"y", QString::number((i / 10 + 0.5) / 10)}};
        markers += QJsonObject{{"sensorid", QString::number(i)},
                               {"pid", QString::number(i + 1)},
                               {"ipncid", "A"},
                               {"name", QStringLiteral("标记 %1").arg(i)},
                               {"point", point},
                               {"showdatas", true}};
    }
    const QJsonObject device{{"ipncid", "A"}, {"type", "sensor"}, {"interfaces", boards}};
    sdk.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    sdk.setDocument(R"({"type":"ipnclist"})", text({{"ipnclist", QJsonArray{device}}, {"group", QJsonArray()}}));
    const QJsonObject plan{
        {"pid", "m"}, {"name", "m"}, {"type", "local"}, {"filename", "m.png"}, {"sensors", markers}};
    sdk.setDocument(R"({"type":"userinfo"})", text({{"userconfig", QJsonObject{{"maps", QJsonArray{plan}}}}}));
}

/// Per cent of a core while `update` is called with a value of an input, a thousand times a second.
double shareOf(const std::function<void(int marker, int input, double value)>& update,
               const std::function<void()>& beatDone) {
    int count = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (int i = 0; i < UpdatesABeat; ++i, ++count)
            update(count % Markers, count / Markers % Inputs, 20 + count % 977 * 0.01);
        beatDone();
    });
    const double before = cpuSeconds();
    QElapsedTimer clock;
    clock.start();
    timer.start(Beat);
    while (clock.elapsed() < Seconds * 1000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return (cpuSeconds() - before) / (double(clock.elapsed()) / 1000) * 100;
}

double ours(const AppContext& context) {
    map::FwidgetElectronMap page(context);
    page.resize(1280, 720);
    page.show();
    page.cell(0)->openMap(QStringLiteral("m"));
    auto* const view = dynamic_cast<map::ElectronMapwidget*>(page.cell(0)->view());
    QImage plan(1920, 1080, QImage::Format_RGB32);
    plan.fill(Qt::white);
    view->setPicture(map::PicturePyramid::of(plan));
    QApplication::processEvents();
    QVariantList values;
    return shareOf(
        [&](int marker, int input, double value) {
            const int pid = pidOf(marker, input);
            context.inputFields.set(QStringLiteral("value"), pid, value);
            context.inputFields.set(QStringLiteral("latesttime"), pid, QDateTime::currentSecsSinceEpoch());
            values += QVariantMap{{QStringLiteral("pid"), pid}};
        },
        [&] {
            emit context.events.sig_UpdateSensorInputData({}, values);
            values.clear();
        });
}

double theirs() {
    QWidget plan;
    plan.resize(1280, 720);
    std::vector<QLabel*> labels;
    for (int i = 0; i < Markers; ++i) {
        labels.push_back(new QLabel(&plan));
        labels.back()->setGeometry(i % 10 * 128, i / 10 * 72, 120, 70);
    }
    plan.show();
    QApplication::processEvents();
    return shareOf(
        [&labels](int marker, int input, double value) {
            labels[static_cast<std::size_t>(marker)]->setText(
                QStringLiteral("标记 %1\n温度: %2 ℃\n温度: %3 ℃\n温度: 1 ℃\n时间:%4")
                    .arg(marker)
                    .arg(value)
                    .arg(input)
                    .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))));
        },
        [] {});
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    const QApplication application(argc, argv);
    corvanta::applyStyle(); // with it come the drawings
    const QTemporaryDir folder;
    RecordingUi ui;
    giveDocuments(FakeSdk::instance());
    AppManager manager(AppPaths(folder.path()), ui, *ipncsdk::ZELIPNCSDK::GetInstance());
    manager.deviceFresh();
    const double own = ours(manager.context());
    const double plain = theirs();
    std::printf("marker_update %.1f percent vs toolkit_labels %.1f ratio %.3f\n", own, plain, own / plain);
    return 0;
}
