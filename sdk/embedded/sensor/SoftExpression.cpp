#include "sensor/SoftExpression.h"

#include <muParser.h>

#include <cmath>
#include <deque>
#include <limits>

namespace ipncsdk::sensor {

namespace {

constexpr std::size_t mostInputs = 64;

/// "i1001": 1001; 0 for every other name.
int pidOfName(const std::string& name) {
    constexpr std::size_t longestPid = 9;
    if (name.size() < 2 || name.size() > longestPid + 1 || name[0] != 'i' ||
        name.find_first_not_of("0123456789", 1) != std::string::npos)
        return 0;
    return std::stoi(name.substr(1));
}

} // namespace

struct SoftExpression::Parser {
    mu::Parser parser;
    std::deque<double> values; ///< the parser holds their addresses
    std::vector<int> pids;
    std::string unknown; ///< a name that is no input

    static double* makeVariable(const char* name, void* self) {
        auto& parser = *static_cast<Parser*>(self);
        const int pid = pidOfName(name);
        if (pid == 0 || parser.pids.size() >= mostInputs)
            parser.unknown = name;
        parser.pids.push_back(pid);
        return &parser.values.emplace_back(0.0);
    }
};

SoftExpression::SoftExpression()
    : parser_(std::make_unique<Parser>()) {}

SoftExpression::~SoftExpression() = default;

std::string SoftExpression::parse(const std::string& text) {
    parser_ = std::make_unique<Parser>();
    try {
        parser_->parser.SetVarFactory(&Parser::makeVariable, parser_.get());
        parser_->parser.SetExpr(text);
        parser_->parser.Eval();
    } catch (const mu::Parser::exception_type& error) {
        return "表达式第 " + std::to_string(error.GetPos() + 1) + " 个字符处有错误";
    }
    // Assigning to an input would last until the next evaluation, and mean nothing.
    if (text.find('=') != std::string::npos) {
        for (std::size_t at = text.find('='); at != std::string::npos; at = text.find('=', at + 1)) {
            const bool pair = at + 1 < text.size() && text[at + 1] == '=';
            const bool comparison = at > 0 && (text[at - 1] == '<' || text[at - 1] == '>' || text[at - 1] == '!');
            if (!pair && !comparison)
                return "表达式中不能赋值";
            if (pair)
                ++at;
        }
    }
    return parser_->unknown.empty() ? std::string() : "表达式中的变量 " + parser_->unknown + " 不是采集输入";
}

const std::vector<int>& SoftExpression::inputs() const {
    return parser_->pids;
}

std::optional<double> SoftExpression::evaluate(const std::function<std::optional<double>(int pid)>& valueOf) {
    for (std::size_t i = 0; i < parser_->pids.size(); ++i) {
        const auto value = valueOf(parser_->pids[i]);
        if (!value)
            return std::nullopt;
        parser_->values[i] = *value;
    }
    try {
        const double result = parser_->parser.Eval();
        return std::isfinite(result) ? std::make_optional(result) : std::nullopt;
    } catch (const mu::Parser::exception_type&) {
        return std::nullopt;
    }
}

} // namespace ipncsdk::sensor
