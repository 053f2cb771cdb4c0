#include "sensor/ModbusDriver.h"

#include <modbus/modbus.h>

#include <algorithm>
#include <cerrno>
#include <numeric>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr int mostRegisters = 120; ///< of one request, below the protocol's 125

bool readsBits(int function) {
    return function <= 2;
}

} // namespace

ModbusDriver::ModbusDriver(const Board& board)
    : params_(board.params) {
    for (const Port& input : board.inputs)
        inputs_.push_back(modbusAddress(input.params));
    for (const Port& output : board.outputs)
        outputs_[output.pid] = modbusAddress(output.params);
    makeBlocks();
}

ModbusDriver::~ModbusDriver() {
    close();
}

void ModbusDriver::makeBlocks() {
    std::vector<std::size_t> order(inputs_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return std::pair(inputs_[a].function, inputs_[a].address) <
               std::pair(inputs_[b].function, inputs_[b].address);
    });
    for (const std::size_t i : order) {
        const ModbusAddress& input = inputs_[i];
        const int end = input.address + input.words();
        Block* const last = blocks_.empty() ? nullptr : &blocks_.back();
        if (last != nullptr && last->function == input.function && input.address <= last->address + last->count &&
            end - last->address <= mostRegisters) {
            last->count = std::max(last->count, end - last->address);
            last->inputs.push_back(i);
        } else {
            blocks_.push_back({input.function, input.address, input.words(), {i}});
        }
    }
}

std::string ModbusDriver::open() {
    close();
    const bool serial = textOr(params_, "mode", "rtu") == "rtu";
    const std::string parity = textOr(params_, "parity", "N");
    if (serial)
        link_ = modbus_new_rtu(textOr(params_, "device", "").c_str(), wholeAt(params_, "baud", 9600), parity.front(),
                               wholeAt(params_, "databits", 8), wholeAt(params_, "stopbits", 1));
    else
        link_ = modbus_new_tcp_pi(textOr(params_, "host", "").c_str(),
                                  std::to_string(wholeAt(params_, "port", 502)).c_str());
    if (link_ == nullptr)
        return modbus_strerror(errno);
    std::string fault = connect();
    if (!fault.empty())
        close();
    return fault;
}

std::string ModbusDriver::connect() {
    const auto timeout = static_cast<std::uint32_t>(wholeAt(params_, "timeout", 1000)) * 1000;
    modbus_set_response_timeout(link_, timeout / 1'000'000, timeout % 1'000'000);
    // The rest of an answer has as long as its beginning.
    modbus_set_byte_timeout(link_, timeout / 1'000'000, timeout % 1'000'000);
    if (modbus_set_slave(link_, wholeAt(params_, "slave", 1)) != 0 || modbus_connect(link_) != 0)
        return modbus_strerror(errno);
    modbus_flush(link_);
    return {};
}

void ModbusDriver::close() {
    if (link_ == nullptr)
        return;
    modbus_close(link_);
    modbus_free(std::exchange(link_, nullptr));
}

ModbusDriver::Result ModbusDriver::failure() {
    const int code = errno;
    // An exception is an answer: the slave is there and does not have what was asked for.
    if (code >= EMBXILFUN && code <= EMBXGTAR)
        return Result::Refused;
    fault_ = modbus_strerror(code);
    return Result::Lost;
}

ModbusDriver::Result ModbusDriver::fetch(int function, int address, int count, std::vector<std::uint16_t>& words) {
    words.assign(static_cast<std::size_t>(count), 0);
    if (!readsBits(function)) {
        const int read = function == 3 ? modbus_read_registers(link_, address, count, words.data())
                                       : modbus_read_input_registers(link_, address, count, words.data());
        return read == count ? Result::Done : failure();
    }
    std::vector<std::uint8_t> bits(words.size());
    const int read = function == 1 ? modbus_read_bits(link_, address, count, bits.data())
                                   : modbus_read_input_bits(link_, address, count, bits.data());
    std::copy(bits.begin(), bits.end(), words.begin());
    return read == count ? Result::Done : failure();
}

ModbusDriver::Result ModbusDriver::readOne(std::size_t input, std::vector<RawValue>& raw) {
    std::vector<std::uint16_t> words;
    const ModbusAddress& address = inputs_[input];
    const Result result = fetch(address.function, address.address, address.words(), words);
    if (result == Result::Done)
        raw[input].value = fromWords(address, words.data());
    return result;
}

ModbusDriver::Result ModbusDriver::readBlock(const Block& block, std::vector<RawValue>& raw) {
    std::vector<std::uint16_t> words;
    const Result result = fetch(block.function, block.address, block.count, words);
    if (result == Result::Done) {
        for (const std::size_t input : block.inputs)
            raw[input].value = fromWords(inputs_[input], words.data() + (inputs_[input].address - block.address));
    } else if (result == Result::Refused && block.inputs.size() > 1) {
        for (const std::size_t input : block.inputs) {
            if (readOne(input, raw) == Result::Lost)
                return Result::Lost;
        }
    }
    return result;
}

std::string ModbusDriver::read(std::vector<RawValue>& raw) {
    if (link_ == nullptr)
        return "a write has lost the connection";
    for (const Block& block : blocks_) {
        if (readBlock(block, raw) == Result::Lost)
            return fault_;
    }
    return {};
}

std::string ModbusDriver::write(const Port& output, double value) {
    const auto found = outputs_.find(output.pid);
    if (found == outputs_.end() || link_ == nullptr)
        return "there is no such output";
    const ModbusAddress& address = found->second;
    const auto words = toWords(address, value);
    if (!words)
        return "the value does not fit the register";
    int done = -1;
    if (address.function == 5)
        done = modbus_write_bit(link_, address.address, words->front() != 0 ? 1 : 0);
    else if (address.function == 6)
        done = modbus_write_register(link_, address.address, words->front());
    else
        done = modbus_write_registers(link_, address.address, static_cast<int>(words->size()), words->data());
    if (done > 0)
        return {};
    std::string reason = modbus_strerror(errno);
    if (failure() == Result::Lost)
        close();
    return reason;
}

} // namespace ipncsdk::sensor
