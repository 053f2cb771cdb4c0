#pragma once

#include "base/JsonText.h"

#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::device {

struct LineMember;

/// A JSON value that knows the line it stands on, for messages to whoever wrote the file by hand.
struct LineNode {
    enum class Kind { Null, Flag, Number, Text, List, Object };

    Kind kind = Kind::Null;
    int line = 1;                    ///< from 1; for lists and objects the line of the opening bracket
    std::string text;                ///< of a `Text`; of a number or flag as JSON writes it
    std::vector<LineNode> items;     ///< of a `List`
    std::vector<LineMember> members; ///< of an `Object`, in the order of the file, doubles included
};

struct LineMember {
    std::string key;
    int line = 1; ///< of the key
    LineNode value;
};

/// The value without its lines.
Json toJson(const LineNode& node);

struct LineParse {
    bool ok = false;
    int line = 1; ///< where the text stops being JSON, when not ok
    LineNode root;
};

/// Parses a whole text. Lines end with a line feed. Bounds are those of every JSON text of the SDK.
LineParse parseWithLines(std::string_view text);

} // namespace ipncsdk::device
