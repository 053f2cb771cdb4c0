#pragma once

#include <optional>
#include <vector>

/// Where a device or group that is dragged in the tree would go. Values only; rows as they are shown.
namespace corvanta::dropRule {

/// The tree: how many devices each group has, in order.
struct Shape {
    std::vector<int> devices;
    bool lastIsRest = false; ///< the last group holds the devices without a group: nothing can be put there
};

/// A row of the tree: a group, or a device of it.
struct Row {
    int group = 0;
    int device = -1; ///< -1: the group's own row
    friend bool operator==(const Row&, const Row&) = default;
};

/// On which part of the row the mouse is.
enum class Side { Above, On, Below };

/// The place of a device in the tree as it will be after the move; nothing where it may not go or already is.
/// `overIsOpen`: the group under the mouse shows its devices.
std::optional<Row> placeOfDevice(const Shape& shape, const Row& dragged, const Row& over, Side side, bool overIsOpen);

/// The place of a group among the groups, likewise. No `over`: below all rows.
std::optional<int> placeOfGroup(const Shape& shape, int dragged, const std::optional<Row>& over, Side side);

} // namespace corvanta::dropRule
