#include "monitor/ui/tour/LogsTour.h"

#include "database/SqlHelp.h"
#include "logs/ui/Check_Log_Widget.h"
#include "logs/ui/LogTableView.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"

#include <QDialog>
#include <QTabBar>

namespace tour = corvanta::tour;

void LogsTour::page(const QString& pictures) {
    script_.step({QStringLiteral("the log of sign-ins"),
                  [this] {
                      tour::click(&window_, "logModule");
                      window_.findChild<QTabBar*>(QStringLiteral("logTabs"))->setCurrentIndex(SqlHelp::LoginLog);
                  },
                  [this] {
                      const auto* const page = window_.findChild<Check_Log_Widget*>();
                      return !page->isSearching() && page->table().pager().rowCount() > 0;
                  }});
    script_.pause(200);
    script_.picture(pictures + QStringLiteral("logs"));
    script_.step({QStringLiteral("the videos again"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}

void LogsTour::exportRows() {
    script_.step({QStringLiteral("the log page again"), [this] { tour::click(&window_, "logModule"); },
                  [this] {
                      return window_.findChild<Check_Log_Widget*>()->isVisible();
                  }});
    script_.menu(QStringLiteral("menu-logs"), [this] { tour::click(&window_, "logMenu"); });
    script_.dialog(
        QStringLiteral("logs-export"), [this] { tour::click(&window_, "exportButton"); },
        [] { tour::openDialog()->reject(); });
    script_.step({QStringLiteral("the videos once more"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}
