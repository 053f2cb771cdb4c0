// The log page's work without its window: reads the operation log to its end as the page does, exports it, and prints
// how long each took (ms) and the most memory it had at once, beyond what it began with (bytes a row).
#include "database/SqlHelp.h"
#include "logs/LogExport.h"
#include "logs/LogKinds.h"
#include "logs/LogLoader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

/// A line of the process's status, bytes.
qint64 status(const char* name) {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name))
            return line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

std::shared_ptr<const corvanta::logs::Table> load(SqlHelp& database) {
    LogLoader loader;
    QEventLoop loop;
    QObject::connect(&loader, &LogLoader::sigFinished, &loop, &QEventLoop::quit);
    loader.start(database.startLogQuery(SqlHelp::OperateLog, {}, {}, true, -1, -1));
    loop.exec();
    return std::make_shared<corvanta::logs::Table>(
        corvanta::logs::Table{corvanta::logs::columnTexts(SqlHelp::OperateLog), loader.takeRows()});
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2 && arguments.size() != 3) {
        std::fprintf(stderr, "log_client DATABASE [FILE.txt|FILE.xls]\n");
        return 2;
    }
    SqlHelp database(arguments[1]);
    const qint64 before = status("VmRSS");
    QElapsedTimer time;
    time.start();
    const auto table = load(database);
    const qint64 queried = time.restart();
    qint64 exported = 0;
    if (arguments.size() == 3) {
        const bool isText = arguments[2].endsWith(QLatin1String(".txt"));
        time.restart();
        LogExport job(table, isText ? LogExport::Format::Text : LogExport::Format::Workbook, arguments[2]);
        while (job.state() == LogExport::State::Running)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        exported = time.elapsed();
        if (job.state() != LogExport::State::Done)
            return 1;
    }
    const int rows = table->rows.rowCount();
    std::printf("%d %lld %lld %lld\n", rows, static_cast<long long>(queried), static_cast<long long>(exported),
                static_cast<long long>((status("VmHWM") - before) / std::max(rows, 1)));
    return 0;
}
