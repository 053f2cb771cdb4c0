#include "app/AppManager.h"
#include "app/CrashReport.h"
#include "app/SingleApplication.h"
#include "base/AppPaths.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "base/ui/MoveWidget.h"
#include "base/ui/Style.h"
#include "base/ui/TipDialog.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/MonitorUi.h"
#include "monitor/ui/OperatorTour.h"
#include "monitor/ui/settings/StartPicture.h"
#include "platform/KeepAwake.h"

#include <QCommandLineParser>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSurfaceFormat>

#include <algorithm>
#include <optional>

namespace {

struct Options {
    QString data;        ///< the data root; empty: where the program decides
    QString screenshots; ///< the short walk's pictures
    QString tour;        ///< the tour's pictures
};

QCommandLineOption versionFileOption() {
    return {QStringLiteral("write-version-file"),
            QStringLiteral("Describes the version that lies in FOLDER for update servers, ends."),
            QStringLiteral("FOLDER")};
}

Options readOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("Keeps all data in FOLDER."),
                                  QStringLiteral("FOLDER"));
    const QCommandLineOption screenshots(QStringLiteral("screenshots"),
                                         QStringLiteral("Signs in, opens cameras, leaves pictures in FOLDER, ends."),
                                         QStringLiteral("FOLDER"));
    const QCommandLineOption tour(QStringLiteral("tour"),
                                  QStringLiteral("Opens every window, leaves pictures in FOLDER, ends."),
                                  QStringLiteral("FOLDER"));
    parser.addOptions({data, screenshots, tour, versionFileOption()});
    parser.addHelpOption();
    parser.process(arguments);
    return {parser.value(data), parser.value(screenshots), parser.value(tour)};
}

/// Writes the description of a version if that is what the program was started for, and returns the exit code. Needs
/// no display.
std::optional<int> writeVersionFileIfAsked(int argc, char** argv) {
    const auto isIt = [](const char* argument) {
        return QByteArray(argument).startsWith("--write-version-file");
    };
    if (std::none_of(argv + 1, argv + argc, isIt))
        return std::nullopt;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption(versionFileOption());
    parser.process(application);
    const QString folder = parser.value(versionFileOption());
    const auto problem = QFileInfo(folder).isDir() ? AppManager::writeVersionFile(QDir(folder).absolutePath())
                                                   : std::optional(QStringLiteral("no such folder: ") + folder);
    if (problem)
        qCritical().noquote() << *problem;
    return problem ? 1 : 0;
}

AppPaths pathsFor(const Options& options) {
    if (options.data.isEmpty())
        return AppPaths::forApplication();
    QDir().mkpath(options.data);
    return AppPaths(options.data);
}

std::unique_ptr<OperatorTour> tourFor(MonitorMainUI& window, const Options& options) {
    if (!options.tour.isEmpty())
        return std::make_unique<OperatorTour>(window, options.tour, OperatorTour::Extent::Everything);
    if (!options.screenshots.isEmpty())
        return std::make_unique<OperatorTour>(window, options.screenshots, OperatorTour::Extent::Short);
    return nullptr;
}

/// A tour stores files that nobody wants: they go below its data, not on this computer's disks.
void keepTourOffDisks(const AppPaths& paths, const Options& options) {
    if (options.tour.isEmpty() || options.data.isEmpty())
        return;
    Settings settings(paths.settingsFile());
    settings.load();
    settings.set(corvanta::keys::DriveFolders, QStringList{QDir(paths.root()).filePath(QStringLiteral("disk"))});
    settings.save();
}

/// Before the first text is shown.
void speakAsSet(const AppPaths& paths) {
    Settings settings(paths.settingsFile());
    settings.load();
    corvanta::speak(settings.get(corvanta::keys::Language).toString());
}

int runWindow(const AppPaths& paths, const Options& options) {
    keepTourOffDisks(paths, options);
    MonitorUi ui;
    AppManager::prepare(paths, ui);
    const AppContext context = AppManager::instance()->context();
    MoveWidget frame;
    MonitorMainUI& window = ui.makeWindow(frame, context, AppManager::instance()->storage());
    window.placeFrame();
    window.show();
    const auto tour = tourFor(window, options);
    const auto startPage = tour == nullptr ? StartPicture::ifWanted(context.settings) : nullptr;
    if (startPage != nullptr) {
        QObject::connect(startPage.get(), &StartPicture::sigEnter, &frame, [&frame, page = startPage.get()] {
            frame.show();
            page->close();
        });
        startPage->show();
    } else {
        frame.show();
    }
    if (tour != nullptr)
        tour->start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    if (const auto shown = corvanta::crashReport::runBoxIfAsked(argc, argv))
        return *shown;
    if (const auto written = writeVersionFileIfAsked(argc, argv))
        return *written;
    const corvanta::platform::KeepAwake awake;
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
#ifdef Q_OS_WIN
    // Everything grows with the display's scaling as letters do, also by a quarter. X servers report resolutions that
    // nobody has chosen; there QT_SCALE_FACTOR says it.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
    // The online map's browser, which may be loaded later, draws with the windows' contexts.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    // Showing a window must not wait for the screen: the wall is brought to it in a beat of its own, and dialogs that
    // show video would wait for one another.
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setSwapInterval(0);
    QSurfaceFormat::setDefaultFormat(format);
    corvanta::crashReport::install();
    SingleApplication application(argc, argv, QStringLiteral("Corvanta"));
    corvanta::loadFonts();
    corvanta::applyStyle();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/style/img/Corvanta.ico")));
    qDebug().noquote() << QString::fromStdString(awake.description());

    Options options = readOptions(QCoreApplication::arguments());
    for (QString* folder : {&options.screenshots, &options.tour}) {
        if (!folder->isEmpty())
            *folder = QFileInfo(*folder).absoluteFilePath(); // before the current folder changes
    }
    // Everything that is named by a relative path lies below this folder.
    const AppPaths paths = pathsFor(options);
    QDir::setCurrent(paths.root());
    speakAsSet(paths);
    if (application.isRunning()) {
        application.sendMessage(QStringLiteral("message from other instance."));
        TipDialog(QCoreApplication::translate("SingleApplication", "提示"),
                  QCoreApplication::translate("SingleApplication", "该软件正在运行!"))
            .exec();
        return 0;
    }
    return runWindow(paths, options);
}
