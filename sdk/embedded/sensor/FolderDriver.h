#pragma once

#include "sensor/Driver.h"

#include <filesystem>

namespace ipncsdk::sensor {

/// Inputs and outputs that are files of a folder, one a line, named by the line's number and holding a number as
/// text. So do kernel interfaces and programs that stand between.
class FolderDriver final : public Driver {
public:
    FolderDriver(const Board& board, std::filesystem::path folder);

    std::string open() override;
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;

private:
    [[nodiscard]] std::filesystem::path fileOf(const Port& port) const;

    const std::vector<Port> inputs_;
    const std::filesystem::path folder_;
};

} // namespace ipncsdk::sensor
