// A program that starts as the client does, and crashes: crash_box_subject crash. When it is started again to show
// its report, it notes what the box shows in the file that BOX_FILE names and presses the box's button.

#include "app/CrashReport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTimer>

#include <csignal>
#include <optional>

namespace {

void noteBox() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible()) {
        QTimer::singleShot(10, qApp, noteBox);
        return;
    }
    const QString name = qEnvironmentVariable("BOX_FILE");
    QFile file(name + QStringLiteral(".part"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QStringLiteral("%1\n%2\n%3\n%4\n")
                       .arg(box->windowTitle())
                       .arg(box->text())
                       .arg(box->icon() == QMessageBox::Critical && box->textFormat() == Qt::RichText)
                       .arg(box->buttons().size())
                       .toUtf8());
        file.close();
        QFile::rename(file.fileName(), name);
    }
    box->buttons().constFirst()->click();
}

void watchForBox() {
    QTimer::singleShot(0, qApp, noteBox);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchForBox)

int main(int argc, char** argv) {
    if (const std::optional<int> code = corvanta::crashReport::runBoxIfAsked(argc, argv)) {
        return *code;
    }
    corvanta::crashReport::install();
    std::raise(SIGABRT);
    return 0;
}
