#include "device/LineJson.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace ipncsdk::device {

namespace {

struct LineCounter {
    int line = 1; ///< line of the character that was consumed last
    bool afterLineFeed = false;
};

/// Counts lines while the parser consumes characters. A number is only over when the character behind it was read;
/// a line feed therefore counts with the character that follows it.
class CountingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* at, LineCounter* counter)
        : at_(at)
        , counter_(counter) {}

    reference operator*() const { return *at_; }
    CountingIterator& operator++() {
        if (counter_->afterLineFeed)
            ++counter_->line;
        counter_->afterLineFeed = *at_ == '\n';
        ++at_;
        return *this;
    }
    CountingIterator operator++(int) {
        CountingIterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const CountingIterator& a, const CountingIterator& b) { return a.at_ == b.at_; }

private:
    const char* at_;
    LineCounter* counter_;
};

/// Builds the tree. The open containers' addresses hold: while one is open, nothing is added to those around it.
class TreeBuilder final : public nlohmann::json_sax<Json> {
public:
    explicit TreeBuilder(const LineCounter& counter)
        : counter_(counter) {}

    bool null() override { return add(LineNode::Kind::Null), true; }
    bool boolean(bool value) override { return scalar(LineNode::Kind::Flag, value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override {
        return scalar(LineNode::Kind::Number, std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return scalar(LineNode::Kind::Number, std::to_string(value));
    }
    bool number_float(number_float_t, const string_t& text) override { return scalar(LineNode::Kind::Number, text); }
    bool string(string_t& value) override {
        add(LineNode::Kind::Text).text = std::move(value);
        return true;
    }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(LineNode::Kind::Object); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(LineNode::Kind::List); }
    bool end_array() override { return close(); }
    bool key(string_t& name) override {
        open_.back()->members.push_back({std::move(name), counter_.line, {}});
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

    LineNode root;

private:
    LineNode& add(LineNode::Kind kind) {
        LineNode* node = &root;
        if (!open_.empty() && open_.back()->kind == LineNode::Kind::Object)
            node = &open_.back()->members.back().value;
        else if (!open_.empty())
            node = &open_.back()->items.emplace_back();
        node->kind = kind;
        node->line = counter_.line;
        return *node;
    }
    bool scalar(LineNode::Kind kind, std::string text) {
        add(kind).text = std::move(text);
        return true;
    }
    bool open(LineNode::Kind kind) {
        open_.push_back(&add(kind));
        return true;
    }
    bool close() {
        open_.pop_back();
        return true;
    }

    const LineCounter& counter_;
    std::vector<LineNode*> open_;
};

} // namespace

Json toJson(const LineNode& node) {
    Json json;
    switch (node.kind) {
    case LineNode::Kind::Null:
        break;
    case LineNode::Kind::Flag:
    case LineNode::Kind::Number:
        return Json::parse(node.text, nullptr, false);
    case LineNode::Kind::Text:
        return node.text;
    case LineNode::Kind::List:
        json = Json::array();
        for (const LineNode& item : node.items)
            json.push_back(toJson(item));
        break;
    case LineNode::Kind::Object:
        json = Json::object();
        // Of two members with one name the first counts, as everywhere in the file.
        for (const LineMember& member : node.members)
            json.emplace(member.key, toJson(member.value));
        break;
    }
    return json;
}

LineParse parseWithLines(std::string_view text) {
    LineParse result;
    if (jsonTextRefusal(text) != nullptr)
        return result;
    LineCounter counter;
    TreeBuilder builder(counter);
    const char* begin = text.data();
    result.ok =
        Json::sax_parse(CountingIterator(begin, &counter), CountingIterator(begin + text.size(), &counter), &builder);
    result.line = counter.line;
    result.root = std::move(builder.root);
    return result;
}

} // namespace ipncsdk::device
