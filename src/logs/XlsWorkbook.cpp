#include "logs/XlsWorkbook.h"

#include <algorithm>

namespace biff = corvanta::biff;

namespace {

// Types of records.
constexpr unsigned Bof = 0x0809;
constexpr unsigned Eof = 0x000A;
constexpr unsigned CodePage = 0x0042;
constexpr unsigned Window1 = 0x003D;
constexpr unsigned DateMode = 0x0022;
constexpr unsigned Font = 0x0031;
constexpr unsigned ExtendedFormat = 0x00E0;
constexpr unsigned Style = 0x0293;
constexpr unsigned BoundSheet = 0x0085;
constexpr unsigned Dimensions = 0x0200;
constexpr unsigned Window2 = 0x023E;
constexpr unsigned Row = 0x0208;
constexpr unsigned LabelSst = 0x00FD;
constexpr unsigned NumberCell = 0x0203;

constexpr unsigned GlobalsStream = 0x0005;
constexpr unsigned SheetStream = 0x0010;
constexpr unsigned CellFormat = 15;        // the first that is for cells; those before are for styles
constexpr std::uint32_t RowsOfABlock = 32; // their row records come before their cells

// Sizes with the record's header, bytes.
constexpr std::uint64_t SheetFrameSize = 20 + 18 + 22 + 4; // BOF, DIMENSIONS, WINDOW2, EOF
constexpr std::uint64_t RowSize = 20;
constexpr std::uint64_t TextSize = 14;
constexpr std::uint64_t NumberSize = 18;

// Places within a workbook are written as 32 bits, of which readers take the sign seriously.
constexpr std::uint64_t LargestWorkbook = 0x7FFFFFFF;

void writeBof(biff::RecordWriter& writer, unsigned stream) {
    constexpr unsigned Version = 0x0600;
    constexpr unsigned Build = 0x0DBB;
    constexpr unsigned Year = 1996;
    writer.record(Bof, biff::Bytes().u16(Version).u16(stream).u16(Build).u16(Year).u32(0x41).u32(6));
}

/// What every workbook must have of fonts and formats: the defaults.
void writeDefaults(biff::RecordWriter& writer) {
    writer.record(CodePage, biff::Bytes().u16(1200)); // UTF-16
    writer.record(
        Window1,
        biff::Bytes().u16(0x168).u16(0x10E).u16(0x3C96).u16(0x2454).u16(0x38).u16(0).u16(0).u16(1).u16(0x258));
    writer.record(DateMode, biff::Bytes().u16(0));
    for (int font = 0; font < 4; ++font)
        writer.record(
            Font, biff::Bytes().u16(200).u16(0).u16(0x7FFF).u16(400).u16(0).u8(0).u8(0).u8(0).u8(0).name("Arial"));
    for (unsigned format = 0; format <= CellFormat; ++format) {
        const bool isCell = format == CellFormat;
        const unsigned own = format == 0 || isCell ? 0x00 : 0xF4; // which attributes are not the parent's
        writer.record(ExtendedFormat, biff::Bytes()
                                          .u16(0)
                                          .u16(0)
                                          .u16(isCell ? 0x0001 : 0xFFF5)
                                          .u8(0x20)
                                          .u8(0)
                                          .u8(0)
                                          .u8(own)
                                          .u32(0)
                                          .u32(0)
                                          .u16(0x20C0));
    }
    writer.record(Style, biff::Bytes().u16(0x8000).u8(0).u8(0xFF)); // "Normal"
}

} // namespace

/// Writes the sheets of a workbook one after the other, and keeps its place among the cells.
class XlsSheetWriter final {
public:
    XlsSheetWriter(const XlsWorkbook& book, biff::RecordWriter& writer, const XlsWorkbook::GoOn& goOn)
        : book_(book)
        , writer_(writer)
        , goOn_(goOn)
        , cell_(book.cells_.begin())
        , number_(book.numbers_.begin()) {}

    /// False when writing failed or was ended.
    bool write(const XlsWorkbook::Sheet& sheet, bool isFirst) {
        writeBof(writer_, SheetStream);
        writer_.record(Dimensions, biff::Bytes().u32(0).u32(sheet.rows).u16(0).u16(book_.columns()).u16(0));
        for (std::uint32_t row = 0; row < sheet.rows; row += RowsOfABlock) {
            writeBlock(row, std::min(row + RowsOfABlock, sheet.rows));
            if (writer_.failed() || (row % 512 == 0 && !goOn_(static_cast<int>(rowsBefore_ + row))))
                return false;
        }
        const unsigned shown = isFirst ? 0x06B6 : 0x00B6;
        writer_.record(Window2, biff::Bytes().u16(shown).u16(0).u16(0).u32(0x40).u16(0).u16(0).u32(0));
        writer_.record(Eof, biff::Bytes());
        rowsBefore_ += sheet.rows;
        return true;
    }

private:
    void writeBlock(std::uint32_t begin, std::uint32_t end) {
        constexpr unsigned DefaultHeight = 0x00FF;
        for (std::uint32_t row = begin; row < end; ++row)
            record(Row, [&](biff::Bytes& bytes) {
                bytes.u16(row)
                    .u16(0)
                    .u16(book_.columns())
                    .u16(DefaultHeight)
                    .u16(0)
                    .u16(0)
                    .u16(0x0100)
                    .u16(CellFormat);
            });
        for (std::uint32_t row = begin; row < end; ++row) {
            for (std::uint32_t column = 0; column < book_.columns(); ++column)
                writeCell(row, column, *cell_++);
        }
    }

    void writeCell(std::uint32_t row, std::uint32_t column, std::uint32_t cell) {
        if (cell == XlsWorkbook::Number)
            record(NumberCell,
                   [&](biff::Bytes& bytes) { bytes.u16(row).u16(column).u16(CellFormat).f64(*number_++); });
        else if (cell != XlsWorkbook::Empty)
            record(LabelSst, [&](biff::Bytes& bytes) { bytes.u16(row).u16(column).u16(CellFormat).u32(cell); });
    }

    template <typename Fill>
    void record(unsigned type, const Fill& fill) {
        content_.clear();
        fill(content_);
        writer_.record(type, content_);
    }

    const XlsWorkbook& book_;
    biff::RecordWriter& writer_;
    const XlsWorkbook::GoOn& goOn_;
    std::deque<std::uint32_t>::const_iterator cell_;
    std::deque<double>::const_iterator number_;
    biff::Bytes content_;
    std::uint32_t rowsBefore_ = 0;
};

XlsWorkbook::XlsWorkbook(std::vector<std::u16string_view> header)
    : header_(std::move(header)) {
    // A workbook without rows has its header, too.
    sheets_.emplace_back();
    for (const std::u16string_view text : header_)
        addTextCell(text);
    sheets_.back().rows = 1;
}

void XlsWorkbook::addNumber(double value) {
    prepareCell();
    numbers_.push_back(value);
    ++sheets_.back().numbers;
    addCell(Number);
}

void XlsWorkbook::addText(std::u16string_view text) {
    prepareCell();
    addTextCell(text);
}

void XlsWorkbook::prepareCell() {
    if (column_ != 0)
        return;
    if (sheets_.back().rows == RowsOfASheet) {
        sheets_.emplace_back();
        for (const std::u16string_view text : header_)
            addTextCell(text);
        sheets_.back().rows = 1;
    }
    ++sheets_.back().rows;
}

void XlsWorkbook::addTextCell(std::u16string_view text) {
    if (text.empty()) {
        addCell(Empty);
        return;
    }
    ++sheets_.back().texts;
    addCell(texts_.add(text.size() > LongestText ? shortened(text) : text));
}

void XlsWorkbook::addCell(std::uint32_t cell) {
    cells_.push_back(cell);
    column_ = column_ + 1 == columns() ? 0 : column_ + 1;
}

std::u16string_view XlsWorkbook::shortened(std::u16string_view text) {
    std::size_t kept = LongestText - CutMark.size();
    const bool dividesPair = (text[kept - 1] & 0xFC00) == 0xD800 && (text[kept] & 0xFC00) == 0xDC00;
    if (dividesPair)
        --kept;
    cutTexts_.push_back(std::u16string(text.substr(0, kept)).append(CutMark));
    return cutTexts_.back();
}

std::uint64_t XlsWorkbook::sizeOf(const Sheet& sheet) const {
    return SheetFrameSize + sheet.rows * RowSize + sheet.texts * TextSize + sheet.numbers * NumberSize;
}

void XlsWorkbook::writeGlobals(biff::RecordWriter& writer, const std::vector<std::uint64_t>& sheetPositions) const {
    writeBof(writer, GlobalsStream);
    writeDefaults(writer);
    int number = 0;
    for (const std::uint64_t position : sheetPositions) {
        const std::string name = "sheet" + std::to_string(++number);
        writer.record(BoundSheet, biff::Bytes().u32(static_cast<std::uint32_t>(position)).u16(0).name(name));
    }
    writeTexts(writer);
    writer.record(Eof, biff::Bytes());
}

void XlsWorkbook::writeTexts(biff::RecordWriter& writer) const {
    std::uint32_t cells = 0;
    for (const Sheet& sheet : sheets_)
        cells += sheet.texts;
    biff::StringTable table(writer, cells, texts_.count());
    for (std::uint32_t text = 0; text < texts_.count(); ++text)
        table.add(texts_.text(text));
    table.finish();
}

std::uint64_t XlsWorkbook::globalsSize() const {
    biff::RecordWriter counter(nullptr);
    writeGlobals(counter, std::vector<std::uint64_t>(sheets_.size()));
    return counter.position();
}

bool XlsWorkbook::write(corvanta::platform::CompoundFile& file, const GoOn& goOn) const {
    // The workbook says in front where its sheets begin.
    std::vector<std::uint64_t> positions;
    std::uint64_t end = globalsSize();
    for (const Sheet& sheet : sheets_) {
        positions.push_back(end);
        end += sizeOf(sheet);
    }
    if (end > LargestWorkbook)
        return false;
    biff::RecordWriter writer(&file);
    writeGlobals(writer, positions);
    XlsSheetWriter sheetWriter(*this, writer, goOn);
    for (std::size_t sheet = 0; sheet < sheets_.size(); ++sheet) {
        if (writer.failed() || writer.position() != positions[sheet] ||
            !sheetWriter.write(sheets_[sheet], sheet == 0))
            return false;
    }
    return writer.flush() && writer.position() == end;
}
