#include "app/AppManager.h"
#include "app/CrashReport.h"
#include "app/SingleApplication.h"
#include "base/AppPaths.h"
#include "base/ui/MoveWidget.h"
#include "base/ui/Style.h"
#include "base/ui/TipDialog.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/MonitorUi.h"
#include "monitor/ui/OperatorTour.h"
#include "platform/KeepAwake.h"

#include <QDebug>
#include <QDir>
#include <QIcon>

namespace {

/// "--screenshots FOLDER" and "--tour FOLDER": the program walks through itself.
std::unique_ptr<OperatorTour> tourFor(MonitorMainUI& window, const QStringList& arguments) {
    if (arguments.size() != 3)
        return nullptr;
    const bool everything = arguments.at(1) == QLatin1String("--tour");
    if (!everything && arguments.at(1) != QLatin1String("--screenshots"))
        return nullptr;
    return std::make_unique<OperatorTour>(
        window, arguments.at(2), everything ? OperatorTour::Extent::Everything : OperatorTour::Extent::Short);
}

int runWindow(const AppPaths& paths, const QStringList& arguments) {
    MonitorUi ui;
    AppManager::prepare(paths, ui);
    const AppContext context = AppManager::instance()->context();
    MoveWidget frame;
    frame.setObjectName(QStringLiteral("w1001"));
    frame.setStyleSheet(QStringLiteral("*#w1001{background-color:rgb(125,125,125)}"));
    auto* const window = new MonitorMainUI(context);
    frame.setContent(window, QSize(MonitorMainUI::SmallestWidth, MonitorMainUI::SmallestHeight), QString());
    ui.attach(*window, context);
    window->show();
    frame.show();
    const auto tour = tourFor(*window, arguments);
    if (tour != nullptr)
        tour->start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    if (const auto shown = corvanta::crashReport::runBoxIfAsked(argc, argv))
        return *shown;
    const corvanta::platform::KeepAwake awake;
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    corvanta::crashReport::install();
    SingleApplication application(argc, argv, QStringLiteral("Corvanta"));
    application.setStyleSheet(corvanta::loadStyle());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/style/img/Corvanta.ico")));
    qDebug().noquote() << QString::fromStdString(awake.description());

    // Everything that is named by a relative path lies below this folder.
    const AppPaths paths = AppPaths::forApplication();
    QDir::setCurrent(paths.root());
    if (application.isRunning()) {
        application.sendMessage(QStringLiteral("message from other instance."));
        TipDialog(QStringLiteral("提示"), QStringLiteral("该软件正在运行!")).exec();
        return 0;
    }
    return runWindow(paths, application.arguments());
}
