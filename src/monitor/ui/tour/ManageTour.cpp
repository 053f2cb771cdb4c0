#include "monitor/ui/tour/ManageTour.h"

#include "base/DeviceModel.h"
#include "manageWidget/ui/AddDeviceDialog.h"
#include "manageWidget/ui/DeviceConfigDialog.h"
#include "manageWidget/ui/PtzDialog.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/ManageControl.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"
#include "video/ui/ItemVideo.h"

#include <QApplication>
#include <QDialog>
#include <QMouseEvent>
#include <QTableView>

#include <utility>

namespace tour = corvanta::tour;

namespace {
constexpr int Settled = 1500; // ms; until what a page reads is there
constexpr int ConfigPages = 10;
} // namespace

void ManageTour::shown(const QString& name, std::function<void()> act) {
    script_.step({name, std::move(act), [] {
                      return true;
                  }});
    script_.pause(Settled);
    script_.picture(name);
}

void ManageTour::close(const QString& what) {
    script_.step({QStringLiteral("closing ") + what, [] { tour::openDialog()->reject(); },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

QString ManageTour::firstDevice() const {
    return window_.devices().deviceOfTile(0).value_or(QString());
}

void ManageTour::dialogs(const QString& pictures) {
    shown(pictures + QStringLiteral("devices"), [this] { window_.manage().openDevices(); });
    shown(pictures + QStringLiteral("devices-delete"), [] {
        auto* const table = tour::openDialog()->findChild<QTableView*>();
        table->selectRow(1);
        tour::click(tour::openDialog(), "manageDelete");
    });
    close(QStringLiteral("the question"));
    close(QStringLiteral("the devices"));
    const auto page = [](AddDeviceDialog::Page one) {
        return [one] {
            qobject_cast<AddDeviceDialog*>(tour::openDialog())->showPage(one);
        };
    };
    shown(pictures + QStringLiteral("add-number"), [this] { window_.manage().openAdd({}); });
    shown(pictures + QStringLiteral("add-address"), page(AddDeviceDialog::Page::Address));
    shown(pictures + QStringLiteral("add-found"), page(AddDeviceDialog::Page::Found));
    close(QStringLiteral("adding"));
    shown(pictures + QStringLiteral("rename"), [this] { window_.manage().openRename(firstDevice()); });
    close(QStringLiteral("renaming"));
    for (int number = 0; number < ConfigPages; ++number) {
        shown(pictures + QStringLiteral("config-%1").arg(number), [this, number] {
            if (number == 0)
                window_.manage().openConfig(firstDevice());
            else
                showConfigPage(number);
        });
    }
    close(QStringLiteral("the configuration"));
}

void ManageTour::showConfigPage(int number) {
    auto* const config = window_.findChild<DeviceConfigDialog*>();
    // A tip about what the device has refused may lie over it.
    for (QDialog* top = tour::openDialog(); top != nullptr && top != config; top = tour::openDialog())
        top->reject();
    if (config != nullptr)
        config->showPage(number);
}

void ManageTour::ptz(const QString& pictures) {
    script_.step({QStringLiteral("a tile alone"),
                  [this] {
                      if (!window_.live().isOpen(firstDevice()))
                          window_.live().open(firstDevice());
                      window_.grid().on_setfocus(0);
                      window_.grid().setZoom(0);
                  },
                  [this] {
                      return window_.grid().tileRequest(0) > 0;
                  }});
    script_.pause(Settled);
    script_.step({QStringLiteral("the mouse over it"),
                  [this] {
                      ItemVideo* const tile = window_.grid().tile(0);
                      const QPoint place = tile->rect().center();
                      QMouseEvent move(QEvent::MouseMove, place, tile->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                                       Qt::NoModifier);
                      QApplication::sendEvent(tile, &move);
                  },
                  [] {
                      return true;
                  }});
    script_.pause(500);
    script_.picture(pictures + QStringLiteral("ptz-pad"));
    script_.step({QStringLiteral("moving it"), [this] { window_.manage().openPtz(firstDevice()); },
                  [] {
                      return true;
                  }});
    script_.pause(Settled);
    script_.picture(pictures + QStringLiteral("ptz-dialog"));
    script_.step({QStringLiteral("all tiles"),
                  [this] {
                      if (auto* const dialog = window_.findChild<PtzDialog*>())
                          dialog->close();
                      window_.grid().setLayout(3, 3, false);
                  },
                  [] {
                      return true;
                  }});
}
