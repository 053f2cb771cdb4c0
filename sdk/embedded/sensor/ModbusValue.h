#pragma once

#include "base/JsonText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

/// Where a value stands in a Modbus slave, and in which form.
struct ModbusAddress {
    enum class Format { Bit, U16, S16, U32, S32, F32 };
    /// The bytes of a 32-bit value in the order in which they come, A being the highest. Of 16-bit values the two
    /// orders that begin with B or D have the bytes of the word exchanged.
    enum class Order { ABCD, CDAB, BADC, DCBA };

    int function = 3;
    int address = 0;
    Format format = Format::U16;
    Order order = Order::ABCD;

    [[nodiscard]] int words() const {
        return format == Format::Bit || format == Format::U16 || format == Format::S16 ? 1 : 2;
    }
};

/// Takes parameters that were checked.
ModbusAddress modbusAddress(const Json& params);

/// What is wrong with function, address and format together, in Chinese, or an empty text.
std::string registerComplaint(const Json& params, bool isInput);

/// The value in the words (as read from the wire, high byte first); `words` holds as many as the address has.
double fromWords(const ModbusAddress& address, const std::uint16_t* words);

/// The words for a value; nothing when the value does not fit the format.
std::optional<std::vector<std::uint16_t>> toWords(const ModbusAddress& address, double value);

} // namespace ipncsdk::sensor
