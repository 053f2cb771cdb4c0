// The client, driven by the orders on its standard input: wall_client DATA-FOLDER WIDTHxHEIGHT

#include "app/AppManager.h"
#include "base/AppPaths.h"
#include "base/ui/MoveWidget.h"
#include "base/ui/Style.h"
#include "client/Harness.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/MonitorUi.h"

#include <QApplication>
#include <QDir>

#include <iostream>
#include <string>
#include <thread>

namespace {

/// Hands each line of the standard input to the harness, in the GUI thread, up to "quit" or the input's end, which
/// is taken for one.
void readOrders(Harness& harness) {
    QString order;
    for (std::string line; order != QLatin1String("quit");) {
        order = std::getline(std::cin, line) ? QString::fromStdString(line) : QStringLiteral("quit");
        QMetaObject::invokeMethod(
            &harness, [&harness, order] { harness.obey(order); }, Qt::QueuedConnection);
    }
}

int run(const QString& data, const QSize& size) {
    const AppPaths paths(data);
    QDir::setCurrent(paths.root());
    MonitorUi ui;
    AppManager::prepare(paths, ui);
    const AppContext context = AppManager::instance()->context();
    MoveWidget frame;
    MonitorMainUI& window = ui.makeWindow(frame, context, AppManager::instance()->storage());
    window.grid().setLayout(8, 8, false);
    window.show();
    frame.setGeometry(QRect(QPoint(0, 0), size));
    frame.show();
    Harness harness(window, context);
    std::thread orders([&harness] { readOrders(harness); });
    const int code = QApplication::exec();
    orders.join(); // its last order has ended the loop
    window.closeWithoutAsking();
    return code;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QApplication application(argc, argv);
    corvanta::applyStyle();
    const QStringList arguments = QCoreApplication::arguments();
    const QStringList sides = arguments.value(2).split(QLatin1Char('x'));
    if (arguments.size() != 3 || sides.size() != 2) {
        std::cerr << "wall_client DATA-FOLDER WIDTHxHEIGHT\n";
        return 2;
    }
    return run(arguments[1], QSize(sides[0].toInt(), sides[1].toInt()));
}
