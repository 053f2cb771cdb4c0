#pragma once

#include "sensor/Driver.h"
#include "sensor/ModbusValue.h"

#include <map>

typedef struct _modbus modbus_t; // NOLINT: the library's own name

namespace ipncsdk::sensor {

/// A Modbus slave on a serial line or on the network.
///
/// Inputs that follow one another are read in one go, and one by one when the slave refuses that. A slave that is
/// late or answers nonsense loses its connection: what it still sends must not be taken for the next answer.
class ModbusDriver final : public Driver {
public:
    explicit ModbusDriver(const Board& board);
    ~ModbusDriver() override;

    std::string open() override;
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;
    void close() override;

private:
    /// Inputs that one request reads.
    struct Block {
        int function = 3;
        int address = 0;
        int count = 0;                   ///< registers or bits
        std::vector<std::size_t> inputs; ///< places in the board's list
    };
    enum class Result { Done, Refused, Lost };

    void makeBlocks();
    std::string connect();
    Result readBlock(const Block& block, std::vector<RawValue>& raw);
    Result readOne(std::size_t input, std::vector<RawValue>& raw);
    Result fetch(int function, int address, int count, std::vector<std::uint16_t>& words);
    /// What a call that failed says about the connection.
    Result failure();

    const Json params_;
    std::vector<ModbusAddress> inputs_;
    std::map<int, ModbusAddress> outputs_; ///< by pid
    std::vector<Block> blocks_;
    modbus_t* link_ = nullptr; ///< owned; null while closed
    std::string fault_;        ///< of the last `Lost`
};

} // namespace ipncsdk::sensor
