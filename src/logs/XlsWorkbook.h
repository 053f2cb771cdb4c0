#pragma once

#include "logs/BiffRecords.h"
#include "logs/SharedStrings.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// An Excel 97 workbook: rows of numbers and texts below a header, in one sheet "sheet1" or, past its 65,536 rows, in
/// as many as it takes, each with the header again.
///
/// It is collected first and then written, since a workbook begins with its texts. Texts that are added outlive the
/// workbook. Of a cell it keeps four bytes and of a different text some thirty, besides a table of eight a place.
/// One thread at a time.
class XlsWorkbook final {
public:
    /// A sheet has no more, the header counted.
    static constexpr int RowsOfASheet = 65536;
    /// A cell's text has no more UTF-16 units; a longer one is cut, and ends with `CutMark`.
    static constexpr std::size_t LongestText = 32767;
    static constexpr std::u16string_view CutMark = u"…（已截断）";

    /// All rows have as many cells as the header, up to 256.
    explicit XlsWorkbook(std::vector<std::u16string_view> header);

    /// The cells of a row, one after the other; the row ends with its last one.
    void addNumber(double value);
    void addText(std::u16string_view text);

    /// Asked now and then with the number of rows written so far; false ends the writing.
    using GoOn = std::function<bool(int rows)>;

    /// Writes the workbook into a new stream; false when that failed or was ended. The file is still to be closed.
    bool write(corvanta::platform::CompoundFile& file, const GoOn& goOn) const;

private:
    struct Sheet {
        std::uint32_t rows = 0;
        std::uint32_t numbers = 0;
        std::uint32_t texts = 0;
    };
    static constexpr std::uint32_t Number = 0xFFFFFFFF; ///< in `cells_`: the next of `numbers_`
    static constexpr std::uint32_t Empty = 0xFFFFFFFE;

    std::uint32_t columns() const { return static_cast<std::uint32_t>(header_.size()); }
    void prepareCell();
    void addCell(std::uint32_t cell);
    void addTextCell(std::u16string_view text);
    std::u16string_view shortened(std::u16string_view text);
    std::uint64_t sizeOf(const Sheet& sheet) const;
    void writeGlobals(corvanta::biff::RecordWriter& writer, const std::vector<std::uint64_t>& sheetPositions) const;
    std::uint64_t globalsSize() const;
    void writeTexts(corvanta::biff::RecordWriter& writer) const;

    friend class XlsSheetWriter;

    std::vector<std::u16string_view> header_;
    std::deque<std::uint32_t> cells_; ///< numbers of texts, or `Number`, or `Empty`; row by row
    std::deque<double> numbers_;
    SharedStrings texts_;
    std::deque<std::u16string> cutTexts_; ///< what `texts_` has of texts that were too long
    std::vector<Sheet> sheets_;
    std::uint32_t column_ = 0; ///< of the next cell
};
