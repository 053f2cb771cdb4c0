#include "database/LogRows.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t BlockSize = 262144; // UTF-16 units

// A row begins with the end of each of its cells, counted from the first one's beginning, two units a number.
constexpr std::size_t UnitsPerEnd = sizeof(quint32) / sizeof(char16_t);

quint32 endAt(const char16_t* row, int cell) {
    quint32 end = 0;
    std::memcpy(&end, row + static_cast<std::size_t>(cell) * UnitsPerEnd, sizeof end);
    return end;
}

} // namespace

LogRows::LogRows(int columns)
    : columns_(columns) {}

QStringView LogRows::cell(int row, int column) const {
    const Place place = rows_[static_cast<std::size_t>(row)];
    const char16_t* const begin = blocks_[place.block].units.get() + place.offset;
    const char16_t* const texts = begin + static_cast<std::size_t>(columns_) * UnitsPerEnd;
    const quint32 from = column == 0 ? 0 : endAt(begin, column - 1);
    return {texts + from, static_cast<qsizetype>(endAt(begin, column) - from)};
}

QStringList LogRows::row(int row) const {
    QStringList result;
    result.reserve(columns_);
    for (int column = 0; column < columns_; ++column)
        result += cell(row, column).toString();
    return result;
}

void LogRows::append(const std::vector<QStringView>& cells) {
    const std::size_t ends = static_cast<std::size_t>(columns_) * UnitsPerEnd;
    std::size_t units = ends;
    for (const QStringView cell : cells)
        units += static_cast<std::size_t>(cell.size());
    char16_t* const begin = reserve(units);
    char16_t* text = begin + ends;
    char16_t* end = begin;
    for (const QStringView cell : cells) {
        text = std::copy_n(cell.utf16(), cell.size(), text);
        const auto position = static_cast<quint32>(text - begin - static_cast<std::ptrdiff_t>(ends));
        std::memcpy(end, &position, sizeof position);
        end += UnitsPerEnd;
    }
}

char16_t* LogRows::reserve(std::size_t units) {
    if (blocks_.empty() || blocks_.back().size - blocks_.back().used < units) {
        const std::size_t size = std::max(units, BlockSize);
        blocks_.push_back({std::make_unique_for_overwrite<char16_t[]>(size), static_cast<quint32>(size), 0});
    }
    Block& block = blocks_.back();
    rows_.push_back({static_cast<quint32>(blocks_.size() - 1), block.used});
    char16_t* const begin = block.units.get() + block.used;
    block.used += static_cast<quint32>(units);
    return begin;
}
