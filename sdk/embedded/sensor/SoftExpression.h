#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

/// An expression over inputs, which are called by their pids: "max(i1001, i1002) * 2". One thread at a time.
class SoftExpression final {
public:
    SoftExpression();
    ~SoftExpression();
    SoftExpression(const SoftExpression&) = delete;
    SoftExpression& operator=(const SoftExpression&) = delete;

    /// Takes another text. Returns what is wrong with it, in Chinese, or an empty text.
    std::string parse(const std::string& text);

    /// The inputs that it takes values from.
    [[nodiscard]] const std::vector<int>& inputs() const;

    /// The value; nothing when one of the inputs has none, or when the result is no number (as after a division by
    /// zero). `valueOf` is asked for each input.
    std::optional<double> evaluate(const std::function<std::optional<double>(int pid)>& valueOf);

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

} // namespace ipncsdk::sensor
