#include "monitor/DropRule.h"

#include <algorithm>

namespace corvanta::dropRule {

namespace {

int groupCount(const Shape& shape) {
    return static_cast<int>(shape.devices.size()) - (shape.lastIsRest ? 1 : 0);
}

/// The place before the move, counted with the dragged device still in it.
Row gapAt(const Shape& shape, const Row& over, Side side, bool overIsOpen) {
    if (over.device >= 0)
        return {over.group, over.device + (side == Side::Below ? 1 : 0)};
    const auto end = [&shape](int group) {
        return Row{group, group < 0 ? 0 : shape.devices[static_cast<std::size_t>(group)]};
    };
    // Above a group is below the last device of the one before it.
    if (side == Side::Above)
        return end(over.group - 1);
    return side == Side::Below && overIsOpen ? Row{over.group, 0} : end(over.group);
}

} // namespace

std::optional<Row> placeOfDevice(const Shape& shape, const Row& dragged, const Row& over, Side side,
                                 bool overIsOpen) {
    Row place = gapAt(shape, over, side, overIsOpen);
    if (place.group < 0 || place.group >= groupCount(shape))
        return std::nullopt;
    if (place.group == dragged.group && place.device > dragged.device)
        --place.device;
    return place == dragged ? std::nullopt : std::optional(place);
}

std::optional<int> placeOfGroup(const Shape& shape, int dragged, const std::optional<Row>& over, Side side) {
    int gap = groupCount(shape);
    if (over)
        gap = std::min(gap, over->group + (over->device < 0 && side == Side::Above ? 0 : 1));
    if (gap > dragged)
        --gap;
    return gap == dragged ? std::nullopt : std::optional(gap);
}

} // namespace corvanta::dropRule
