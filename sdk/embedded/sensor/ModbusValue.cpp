#include "sensor/ModbusValue.h"

#include "sensor/Board.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace ipncsdk::sensor {

namespace {

using Format = ModbusAddress::Format;
using Order = ModbusAddress::Order;

template <typename Value, std::size_t Count>
Value named(const std::array<std::string_view, Count>& names, const std::string& name, Value usual) {
    for (std::size_t i = 0; i < Count; ++i) {
        if (names[i] == name)
            return static_cast<Value>(i);
    }
    return usual;
}

constexpr std::array<std::string_view, 6> formatNames = {"bit", "u16", "s16", "u32", "s32", "f32"};
constexpr std::array<std::string_view, 4> orderNames = {"ABCD", "CDAB", "BADC", "DCBA"};

std::uint16_t exchanged(std::uint16_t word) {
    return static_cast<std::uint16_t>(word << 8 | word >> 8);
}

bool exchangesBytes(Order order) {
    return order == Order::BADC || order == Order::DCBA;
}

bool exchangesWords(Order order) {
    return order == Order::CDAB || order == Order::DCBA;
}

/// The whole number nearest to the value, when it lies in the range.
template <typename Integer>
std::optional<std::uint32_t> rounded(double value) {
    const double nearest = std::round(value);
    if (!(nearest >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          nearest <= static_cast<double>(std::numeric_limits<Integer>::max())))
        return std::nullopt;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(nearest));
}

std::optional<std::uint32_t> bitsOf(Format format, double value) {
    switch (format) {
    case Format::Bit:
        return value != 0 ? 1U : 0U;
    case Format::U16:
        return rounded<std::uint16_t>(value);
    case Format::S16:
        return rounded<std::int16_t>(value);
    case Format::U32:
        return rounded<std::uint32_t>(value);
    case Format::S32:
        return rounded<std::int32_t>(value);
    case Format::F32:
        break;
    }
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max())))
        return std::nullopt;
    const auto number = static_cast<float>(value);
    std::uint32_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

} // namespace

ModbusAddress modbusAddress(const Json& params) {
    ModbusAddress address;
    address.function = wholeAt(params, "function", 3);
    address.address = wholeAt(params, "address", 0);
    address.format = named(formatNames, textOr(params, "format", "u16"), Format::U16);
    address.order = named(orderNames, textOr(params, "order", "ABCD"), Order::ABCD);
    return address;
}

std::string registerComplaint(const Json& params, bool isInput) {
    const ModbusAddress address = modbusAddress(params);
    const bool coils = isInput ? address.function <= 2 : address.function == 5;
    if (coils && address.format != Format::Bit)
        return "线圈和离散输入的数据格式应为位";
    if (address.function == 6 && address.words() == 2)
        return "32 位数据应使用功能码 16";
    if (address.address + address.words() > 65536)
        return "寄存器地址超出范围";
    return {};
}

double fromWords(const ModbusAddress& address, const std::uint16_t* words) {
    const bool bytes = exchangesBytes(address.order);
    const auto word = [&](int index) {
        return static_cast<std::uint32_t>(bytes ? exchanged(words[index]) : words[index]);
    };
    if (address.words() == 1) {
        const std::uint32_t value = word(0);
        if (address.format == Format::Bit)
            return value != 0 ? 1 : 0;
        return address.format == Format::S16 ? static_cast<double>(static_cast<std::int16_t>(value))
                                             : static_cast<double>(value);
    }
    const bool swapped = exchangesWords(address.order);
    const std::uint32_t bits = word(swapped ? 1 : 0) << 16 | word(swapped ? 0 : 1);
    if (address.format == Format::F32) {
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return static_cast<double>(value);
    }
    return address.format == Format::S32 ? static_cast<double>(static_cast<std::int32_t>(bits))
                                         : static_cast<double>(bits);
}

std::optional<std::vector<std::uint16_t>> toWords(const ModbusAddress& address, double value) {
    const auto bits = bitsOf(address.format, value);
    if (!bits)
        return std::nullopt;
    std::vector<std::uint16_t> words;
    if (address.words() == 1)
        words = {static_cast<std::uint16_t>(*bits)};
    else if (exchangesWords(address.order))
        words = {static_cast<std::uint16_t>(*bits), static_cast<std::uint16_t>(*bits >> 16)};
    else
        words = {static_cast<std::uint16_t>(*bits >> 16), static_cast<std::uint16_t>(*bits)};
    if (exchangesBytes(address.order)) {
        for (std::uint16_t& word : words)
            word = exchanged(word);
    }
    return words;
}

} // namespace ipncsdk::sensor
