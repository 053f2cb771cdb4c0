#include "sensor/SoftDriver.h"

#include <utility>

namespace ipncsdk::sensor {

SoftDriver::SoftDriver(const Board& board, std::function<std::optional<double>(int pid)> valueOf)
    : valueOf_(std::move(valueOf)) {
    for (const Port& input : board.inputs) {
        auto expression = std::make_unique<SoftExpression>();
        if (!expression->parse(textOr(input.params, "expression", "")).empty())
            expression.reset();
        expressions_.push_back(std::move(expression));
    }
}

std::string SoftDriver::read(std::vector<RawValue>& raw) {
    for (std::size_t i = 0; i < expressions_.size(); ++i)
        raw[i].value = expressions_[i] ? expressions_[i]->evaluate(valueOf_) : std::nullopt;
    return {};
}

std::string SoftDriver::write(const Port& /*output*/, double /*value*/) {
    return "computed boards have no outputs";
}

} // namespace ipncsdk::sensor
