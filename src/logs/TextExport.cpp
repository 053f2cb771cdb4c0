#include "logs/TextExport.h"

#include <QByteArray>
#include <QIODevice>

namespace corvanta::logs {

namespace {

constexpr int RowsAtOnce = 512;

/// Adds a line of `count` cells that `cellAt(n)` gives.
template <typename CellAt>
void addLine(QByteArray& text, int count, const CellAt& cellAt) {
    for (int column = 0; column < count; ++column) {
        if (column > 0)
            text += " , ";
        text += QStringView(cellAt(column)).toUtf8();
    }
    text += ",\n";
}

} // namespace

bool writeText(const Table& table, QIODevice& device, const std::function<bool(int rows)>& goOn) {
    QByteArray text;
    addLine(text, table.header.size(), [&](int column) { return QStringView(table.header[column]); });
    for (int row = 0; row < table.rows.rowCount(); ++row) {
        addLine(text, table.rows.columnCount(), [&](int column) { return table.rows.cell(row, column); });
        if (row % RowsAtOnce == 0) {
            if (device.write(text) != text.size() || !goOn(row))
                return false;
            text.resize(0); // keeps its memory
        }
    }
    return device.write(text) == text.size();
}

} // namespace corvanta::logs
