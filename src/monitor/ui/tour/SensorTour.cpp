#include "monitor/ui/tour/SensorTour.h"

#include "base/DeviceModel.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/SensorControl.h"
#include "monitor/ui/tour/TourScript.h"
#include "sensor/InputRecords.h"
#include "sensor/SensorTypes.h"
#include "sensor/ui/ChartPage.h"
#include "sensor/ui/SensorPage.h"

#include <QDialog>
#include <QMenu>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
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

void SensorTour::inside(const QString& name, std::function<void()> act) {
    shown(name, [this, act = std::move(act)] { QTimer::singleShot(0, &window_, act); });
}

void SensorTour::ports(const QString& pictures) {
    // The boards of a device: the first measures, the last switches.
    const auto openBoard = [](int tab, bool last) {
        auto* const dialog = tour::openDialog();
        auto* const boards =
            dialog == nullptr ? nullptr : dialog->findChild<QTreeWidget*>(QStringLiteral("boardList"));
        if (boards == nullptr || boards->topLevelItemCount() == 0)
            return;
        boards->setCurrentItem(boards->topLevelItem(last ? boards->topLevelItemCount() - 1 : 0));
        QTimer::singleShot(0, dialog, [tab] {
            auto* const tabs = tour::openDialog()->findChild<QTabWidget*>(QStringLiteral("boardTabs"));
            if (tabs != nullptr)
                tabs->setCurrentIndex(tab);
        });
        tour::click(dialog, "boardEdit");
    };
    const auto clickHere = [](const char* button) {
        return [button] {
            if (QDialog* const dialog = tour::openDialog())
                tour::click(dialog, button);
        };
    };
    const auto openSensors = [this] {
        script_.step({QStringLiteral("the sensors again"),
                      [this] { window_.sensors().openSettings(firstDevice(), 0); },
                      [] {
                          return tour::openDialog() != nullptr;
                      }});
        script_.pause(Settled);
    };
    openSensors();
    inside(pictures + QStringLiteral("sensor-inputs"), [openBoard] { openBoard(1, false); });
    inside(pictures + QStringLiteral("sensor-input"), clickHere("inputEdit"));
    inside(pictures + QStringLiteral("sensor-calibration"), clickHere("portCalibrate"));
    close(QStringLiteral("the inputs"));
    openSensors();
    inside(pictures + QStringLiteral("sensor-outputs"), [openBoard] { openBoard(2, true); });
    inside(pictures + QStringLiteral("sensor-write"), clickHere("outputUse"));
    close(QStringLiteral("the outputs"));
}

void SensorTour::openMeasuring(const QString& boardType) {
    const DeviceModel& devices = window_.devices();
    for (const QString& ipncId : devices.ipncIds()) {
        const auto boards = sensor::boardsOf(*devices.device(ipncId));
        const auto it = std::find_if(boards.begin(), boards.end(), [&boardType](const QVariantMap& board) {
            return board.value(QStringLiteral("type")).toString() == boardType;
        });
        if (it == boards.end())
            continue;
        window_.sensors().openSettings(ipncId, it->value(QStringLiteral("pid")).toInt());
        if (QDialog* const dialog = tour::openDialog())
            tour::click(dialog, "boardMeasure");
        return;
    }
}

void SensorTour::measuring(const QString& pictures) {
    const auto clickIn = [](const char* button) {
        return [button] {
            if (QDialog* const dialog = tour::openDialog())
                tour::click(dialog, button);
        };
    };
    shown(pictures + QStringLiteral("measure-code"), [this] { openMeasuring(QStringLiteral("QR")); });
    shown(pictures + QStringLiteral("measure-photo"), clickIn("photoCapture"));
    close(QStringLiteral("the code's setup"));
    shown(pictures + QStringLiteral("measure-laser"), [this] { openMeasuring(QStringLiteral("LASER")); });
    shown(pictures + QStringLiteral("measure-spot"), clickIn("spotFind"));
    close(QStringLiteral("the laser's setup"));
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
    shown(pictures + QStringLiteral("chart-alarms"), [this] {
        tour::click(&window_, "chartDats");
        auto* const files = window_.findChild<QTreeWidget*>(QStringLiteral("datList"));
        if (files != nullptr && files->topLevelItemCount() > 0)
            files->setCurrentItem(files->topLevelItem(0));
    });
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
    inside(pictures + QStringLiteral("sensor-new"), [] {
        auto* const list = tour::openDialog();
        auto* const menu = list == nullptr ? nullptr : list->findChild<QMenu*>(QStringLiteral("boardNew"));
        if (menu != nullptr && !menu->isEmpty())
            menu->actions().constFirst()->trigger();
    });
    close(QStringLiteral("the sensors"));
    ports(pictures);
    measuring(pictures);
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
