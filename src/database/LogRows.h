#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <vector>

/// Rows of texts, all with the same number of columns, kept closely: a row costs two bytes a character, four a cell
/// and eight more. A million rows of a log are some 200 MB less this way than as lists of strings.
///
/// Only grows. Movable, not copied by accident.
class LogRows final {
public:
    explicit LogRows(int columns = 0);
    LogRows(LogRows&&) noexcept = default;
    LogRows& operator=(LogRows&&) noexcept = default;
    LogRows(const LogRows&) = delete;
    LogRows& operator=(const LogRows&) = delete;
    ~LogRows() = default;

    int columnCount() const { return columns_; }
    int rowCount() const { return static_cast<int>(rows_.size()); }
    bool isEmpty() const { return rows_.empty(); }

    /// A cell's text. It stays valid until the rows are destroyed; growing does not move it.
    QStringView cell(int row, int column) const;
    QStringList row(int row) const;

    /// Adds a row; `cells` has a text for each column, which is copied.
    void append(const std::vector<QStringView>& cells);

private:
    /// A piece of memory that is filled from its beginning and never moved.
    struct Block {
        std::unique_ptr<char16_t[]> units;
        quint32 size = 0;
        quint32 used = 0;
    };
    struct Place {
        quint32 block;
        quint32 offset; ///< of the row in its block, UTF-16 units
    };
    char16_t* reserve(std::size_t units);

    int columns_;
    std::vector<Block> blocks_;
    std::vector<Place> rows_;
};
