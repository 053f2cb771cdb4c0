#include "logs/LogExport.h"

#include "logs/TextExport.h"
#include "logs/XlsWorkbook.h"
#include "platform/CompoundFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace logs = corvanta::logs;

namespace {

std::u16string_view view(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

/// A name beside `file` that nothing has.
QString partName(const QString& file) {
    for (int n = 1;; ++n) {
        QString part = file + QStringLiteral(".part%1").arg(n);
        const QFileInfo info(part);
        if (n == 1000 || !(info.exists() || info.isSymLink()))
            return part;
    }
}

std::filesystem::path pathOf(const QString& file) {
#ifdef Q_OS_WIN
    return {file.toStdWString()};
#else
    return {QFile::encodeName(file).toStdString()};
#endif
}

} // namespace

LogExport::LogExport(std::shared_ptr<const logs::Table> table, Format format, QString file)
    : table_(std::move(table))
    , format_(format)
    , file_(std::move(file))
    , thread_([this] { run(); }) {}

LogExport::~LogExport() {
    cancel();
    thread_.join();
}

int LogExport::totalSteps() const {
    return table_->rows.rowCount() * (format_ == Format::Workbook ? 2 : 1);
}

QString LogExport::withSuffix(const QString& file, Format format) {
    const QString suffix = format == Format::Text ? QStringLiteral("txt") : QStringLiteral("xls");
    return QFileInfo(file).suffix().toLower() == suffix ? file : file + QLatin1Char('.') + suffix;
}

bool LogExport::isNumber(QStringView cell, double& value) {
    const QStringView text = cell.trimmed();
    if (text.isEmpty() || text.front().isLetter())
        return false;
    bool ok = false;
    value = QString::fromRawData(text.data(), static_cast<int>(text.size())).toDouble(&ok);
    return ok && std::isfinite(value);
}

bool LogExport::reached(int steps) {
    steps_.store(std::min(steps, totalSteps()), std::memory_order_relaxed);
    return !cancelled_.load(std::memory_order_relaxed);
}

void LogExport::run() {
    const QString part = partName(file_);
    std::error_code error;
    const bool written = writeAs(part) && reached(totalSteps());
    if (written)
        std::filesystem::rename(pathOf(part), pathOf(file_), error);
    const bool done = written && !error;
    if (!done) {
        const bool cancelled = cancelled_.load(std::memory_order_relaxed);
        qDebug() << (cancelled ? "export cancelled" : "export failed") << file_;
        QFile::remove(part);
        state_.store(cancelled ? State::Cancelled : State::Failed, std::memory_order_release);
        return;
    }
    state_.store(State::Done, std::memory_order_release);
}

bool LogExport::writeAs(const QString& file) {
    return format_ == Format::Text ? writeTextFile(file) : writeWorkbook(file);
}

bool LogExport::writeTextFile(const QString& file) {
    QFile device(file);
    if (!device.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    const bool written =
        logs::writeText(*table_, device, [this](int rows) { return reached(rows); }) && device.flush();
    device.close();
    return written && device.error() == QFile::NoError;
}

bool LogExport::writeWorkbook(const QString& file) {
    const auto output = corvanta::platform::createCompoundFile(pathOf(file), "Workbook");
    if (output == nullptr)
        return false;
    std::vector<std::u16string_view> header;
    for (const QString& text : table_->header)
        header.push_back(view(text));
    XlsWorkbook book(std::move(header));
    const LogRows& rows = table_->rows;
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column) {
            const QStringView cell = rows.cell(row, column);
            double value = 0;
            if (isNumber(cell, value))
                book.addNumber(value);
            else
                book.addText(view(cell));
        }
        if (row % 512 == 0 && !reached(row))
            return false;
    }
    const int collected = rows.rowCount();
    return book.write(*output, [this, collected](int written) { return reached(collected + written); }) &&
           output->close();
}
