#include "logs/BiffRecords.h"

#include "platform/CompoundFile.h"

#include <algorithm>
#include <bit>

namespace corvanta::biff {

namespace {

constexpr std::size_t BufferSize = 65536;

constexpr unsigned SharedStringTable = 0x00FC;
constexpr unsigned Continue = 0x003C;

} // namespace

Bytes& Bytes::f64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return u32(static_cast<std::uint32_t>(bits)).u32(static_cast<std::uint32_t>(bits >> 32));
}

Bytes& Bytes::name(std::string_view text) {
    u8(static_cast<unsigned>(text.size())).u8(0); // one byte a letter
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
}

void Bytes::append(const char16_t* text, std::size_t units, bool wide) {
    const std::size_t at = bytes_.size();
    bytes_.resize(at + (wide ? 2 * units : units));
    std::uint8_t* to = bytes_.data() + at;
    for (const char16_t* unit = text; unit != text + units; ++unit) {
        *to++ = static_cast<std::uint8_t>(*unit & 0xFF);
        if (wide)
            *to++ = static_cast<std::uint8_t>(*unit >> 8);
    }
}

RecordWriter::RecordWriter(platform::CompoundFile* file)
    : file_(file) {
    if (file_ != nullptr)
        buffer_.reserve(BufferSize + HeaderSize + LongestRecord);
}

void RecordWriter::record(unsigned type, const Bytes& content) {
    position_ += HeaderSize + content.size();
    if (file_ == nullptr || failed_)
        return;
    for (const unsigned value : {type, static_cast<unsigned>(content.size())}) {
        buffer_.push_back(static_cast<std::uint8_t>(value & 0xFF));
        buffer_.push_back(static_cast<std::uint8_t>(value >> 8));
    }
    buffer_.insert(buffer_.end(), content.data(), content.data() + content.size());
    if (buffer_.size() >= BufferSize)
        flush();
}

bool RecordWriter::flush() {
    if (file_ != nullptr && !failed_)
        failed_ = !file_->write(buffer_.data(), buffer_.size());
    buffer_.clear();
    return !failed_;
}

StringTable::StringTable(RecordWriter& writer, std::uint32_t cells, std::uint32_t texts)
    : writer_(writer)
    , type_(SharedStringTable) {
    content_.u32(cells).u32(texts);
}

bool StringTable::isWide(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit > 0xFF; });
}

void StringTable::add(std::u16string_view text) {
    // A text's length and form stand together with its first unit; what does not fit any more begins the next
    // record with its form said again, and no unit is divided.
    const bool wide = isWide(text);
    const std::size_t width = wide ? 2 : 1;
    constexpr std::size_t PrefixSize = 3;
    if (room() < PrefixSize + width)
        nextRecord();
    content_.u16(static_cast<unsigned>(text.size())).u8(wide ? 1 : 0);
    while (true) {
        const std::size_t units = std::min(text.size(), room() / width);
        content_.append(text.data(), units, wide);
        text.remove_prefix(units);
        if (text.empty())
            break;
        nextRecord();
        content_.u8(wide ? 1 : 0);
    }
}

void StringTable::finish() {
    writer_.record(type_, content_);
}

void StringTable::nextRecord() {
    writer_.record(type_, content_);
    content_.clear();
    type_ = Continue;
}

} // namespace corvanta::biff
