#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace corvanta::platform {
class CompoundFile;
}

/// Excel 97 workbooks (BIFF8): a row of records, each a type, a length and that many bytes, all little-endian.
namespace corvanta::biff {

/// A record's content can not be longer, bytes; more goes on in records of the type `Continue`.
inline constexpr std::size_t LongestRecord = 8224;
inline constexpr std::size_t HeaderSize = 4;

/// The bytes of a record.
class Bytes final {
public:
    Bytes& u8(unsigned value) {
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    Bytes& u16(unsigned value) { return u8(value & 0xFF).u8(value >> 8 & 0xFF); }
    Bytes& u32(std::uint32_t value) { return u16(value & 0xFFFF).u16(value >> 16); }
    /// Eight bytes, IEEE 754.
    Bytes& f64(double value);
    /// A text of up to 255 Latin letters with its length before it, as font and sheet names have it.
    Bytes& name(std::string_view text);
    void append(const char16_t* text, std::size_t units, bool wide);

    const std::uint8_t* data() const { return bytes_.data(); }
    std::size_t size() const { return bytes_.size(); }
    void clear() { bytes_.clear(); }

private:
    std::vector<std::uint8_t> bytes_;
};

/// Writes records into a file. After the first failure nothing is written any more.
class RecordWriter final {
public:
    /// `file` outlives the writer; null only counts.
    explicit RecordWriter(platform::CompoundFile* file);

    void record(unsigned type, const Bytes& content);
    /// Writes what is still held back; false when anything failed.
    bool flush();

    bool failed() const { return failed_; }
    /// Bytes of all records so far.
    std::uint64_t position() const { return position_; }

private:
    platform::CompoundFile* file_;
    std::vector<std::uint8_t> buffer_;
    std::uint64_t position_ = 0;
    bool failed_ = false;
};

/// The table of a workbook's texts: one record and those that continue it. Used twice, to learn its size and to
/// write it.
class StringTable final {
public:
    /// `cells` cells refer to `texts` different texts.
    StringTable(RecordWriter& writer, std::uint32_t cells, std::uint32_t texts);

    /// Up to 65,535 UTF-16 units. Texts of Latin-1 take one byte a unit.
    void add(std::u16string_view text);
    void finish();

    /// Whether a text is written with two bytes a unit.
    static bool isWide(std::u16string_view text);

private:
    std::size_t room() const { return LongestRecord - content_.size(); }
    void nextRecord();

    RecordWriter& writer_;
    Bytes content_;
    unsigned type_;
};

} // namespace corvanta::biff
