#include "sensor/FolderDriver.h"

#include <cmath>
#include <fstream>
#include <locale>
#include <system_error>
#include <utility>

namespace ipncsdk::sensor {

namespace {

double turned(const Port& port, double value) {
    return wholeAt(port.params, "invert", 0) == 0 ? value : value == 0 ? 1 : 0;
}

} // namespace

FolderDriver::FolderDriver(const Board& board, std::filesystem::path folder)
    : inputs_(board.inputs)
    , folder_(std::move(folder)) {}

std::filesystem::path FolderDriver::fileOf(const Port& port) const {
    return folder_ / std::to_string(wholeAt(port.params, "line", 0));
}

std::string FolderDriver::open() {
    std::error_code error;
    return std::filesystem::is_directory(folder_, error) ? "" : "the folder is not there";
}

std::string FolderDriver::read(std::vector<RawValue>& raw) {
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        std::ifstream in(fileOf(inputs_[i]));
        in.imbue(std::locale::classic());
        double value = 0;
        raw[i].value =
            in >> value && std::isfinite(value) ? std::make_optional(turned(inputs_[i], value)) : std::nullopt;
    }
    return open();
}

std::string FolderDriver::write(const Port& output, double value) {
    const std::filesystem::path file = fileOf(output);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return "the output's file is not there";
    std::ofstream out(file, std::ios::trunc);
    out.imbue(std::locale::classic());
    out << turned(output, value) << '\n';
    out.close();
    return out ? "" : "the output's file can't be written";
}

} // namespace ipncsdk::sensor
