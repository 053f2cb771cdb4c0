#include "monitor/ui/tour/SensorTour.h"

#include "base/DeviceModel.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/SensorControl.h"
#include "monitor/ui/tour/TourScript.h"
#include "sensor/InputRecords.h"
#include "sensor/ui/ChartPage.h"
#include "sensor/ui/SensorPage.h"

#include <QDialog>
#include <QMenu>
#include <QTimer>

#include <utility>

namespace sensor = corvanta::sensor;
namespace tour = corvanta::tour;

namespace {
constexpr int Settled = 1500; // ms; until what is asked for is there
} // namespace

void SensorTour::shown(const QString& name, std::function<void()> act) {
    script_.step({name, std::move(act), [] {
                      return true;
                  }});
    script_.pause(Settled);
    script_.picture(name);
}

void SensorTour::close(const QString& what) {
    script_.step({QStringLiteral("closing ") + what,
                  [] {
                      constexpr int most = 5; // lie over each other
                      for (int i = 0; i < most && tour::openDialog() != nullptr; ++i)
                          tour::openDialog()->reject();
                  },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

QString SensorTour::firstDevice() const {
    const auto inputs = sensor::inputsOf(window_.devices());
    return inputs.isEmpty() ? window_.devices().deviceOfTile(0).value_or(QString()) : inputs[0].ipncId;
}

void SensorTour::pages(const QString& pictures) {
    shown(pictures + QStringLiteral("data"), [this] { tour::click(&window_, "dataModule"); });
    shown(pictures + QStringLiteral("chart"), [this] {
        tour::click(&window_, "chartModule");
        QVector<int> first;
        for (const sensor::InputRecord& input : sensor::inputsOf(window_.devices()).mid(0, 3))
            first += input.pid;
        tour::click(&window_, "chartLayout1");
        window_.sensors().charts()->showInputs(first);
    });
    shown(pictures + QStringLiteral("charts"), [this] {
        tour::click(&window_, "chartLayout4");
        const auto inputs = sensor::inputsOf(window_.devices());
        for (int i = 0; i < 3 && i < inputs.size(); ++i)
            window_.sensors().charts()->showInputs({inputs[i].pid});
    });
    shown(pictures + QStringLiteral("charts-9"), [this] { tour::click(&window_, "chartLayout9"); });
    shown(pictures + QStringLiteral("chart-alarms"), [this] { tour::click(&window_, "chartDats"); });
    script_.step({QStringLiteral("the videos behind the charts"),
                  [this] {
                      tour::click(&window_, "chartLayout1");
                      tour::click(&window_, "videoModule");
                  },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}

void SensorTour::dialogs(const QString& pictures) {
    shown(pictures + QStringLiteral("sensors"), [this] { window_.sensors().openSettings(firstDevice(), 0); });
    shown(pictures + QStringLiteral("sensor-new"), [this] {
        // It runs an event loop of its own, which the steps go on in.
        QTimer::singleShot(0, &window_, [] {
            auto* const list = tour::openDialog();
            auto* const menu = list == nullptr ? nullptr : list->findChild<QMenu*>(QStringLiteral("boardNew"));
            if (menu != nullptr && !menu->isEmpty())
                menu->actions().constFirst()->trigger();
        });
    });
    close(QStringLiteral("the sensors"));
    shown(pictures + QStringLiteral("thresholds"), [this] {
        const auto inputs = sensor::inputsOf(window_.devices());
        if (!inputs.isEmpty())
            window_.sensors().openThresholds(inputs[0].pid);
    });
    close(QStringLiteral("the thresholds"));
    shown(pictures + QStringLiteral("report"), [this] {
        QVector<int> inputs;
        for (const sensor::InputRecord& input : sensor::inputsOf(window_.devices()).mid(0, 2))
            inputs += input.pid;
        window_.sensors().openReport(inputs);
    });
    close(QStringLiteral("the report"));
}
