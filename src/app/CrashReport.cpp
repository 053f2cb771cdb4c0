#include "app/CrashReport.h"

#include "platform/CrashHandler.h"

#include <QApplication>
#include <QMessageBox>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace corvanta::crashReport {

namespace {

void showBox(quint64 code, quint64 address) {
    QMessageBox box(QMessageBox::Critical, QCoreApplication::translate("CrashReport", "程序崩溃"),
                    text(code, address), QMessageBox::Ok);
    box.setTextFormat(Qt::RichText);
    box.setObjectName(QStringLiteral("crashReportBox"));
    box.setAccessibleName(box.windowTitle());
    box.exec();
}

/// Called on the thread that crashed. Without an application object there is nothing to show a box with.
void showReport(std::uint32_t code, std::uint64_t address) {
    if (QCoreApplication::instance() != nullptr) {
        showBox(code, address);
    }
}

/// The number that `text` writes in hexadecimal; nothing if it is anything else.
std::optional<quint64> fromHex(std::string_view text) {
    quint64 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

/// Without a display Qt ends the process by a crash of its own.
bool hasDisplay() {
#ifdef Q_OS_UNIX
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

} // namespace

void install() {
    platform::CrashHandlerOptions options;
    options.showReport = showReport;
    if (!platform::installCrashHandler(options)) {
        qDebug("No crash handler: a crash will leave no report.");
    }
}

std::optional<int> runBoxIfAsked(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], platform::crashReportArgument) != 0) {
        return std::nullopt;
    }
    const auto code = argc == 4 ? fromHex(argv[2]) : std::nullopt;
    const auto address = argc == 4 ? fromHex(argv[3]) : std::nullopt;
    if (!code || !address) {
        std::fputs("--crash-report takes a code and an address in hexadecimal.\n", stderr);
        return 2;
    }
    if (!hasDisplay()) {
        std::fprintf(stderr, "The program has crashed: code %llx, address %llx.\n",
                     static_cast<unsigned long long>(*code), static_cast<unsigned long long>(*address));
        return 1;
    }
    const QApplication application(argc, argv);
    showBox(*code, *address);
    return 0;
}

QString text(quint64 code, quint64 address) {
    return QCoreApplication::translate("CrashReport",
                                       "<FONT size=4><div><b>对于发生的错误，表示诚挚的歉意</b><br/></div>") +
           QCoreApplication::translate("CrashReport", "<div>错误代码：%1</div><div>错误地址：%2</div></FONT>")
               .arg(QString::number(code, 16), QString::number(address, 16));
}

} // namespace corvanta::crashReport
