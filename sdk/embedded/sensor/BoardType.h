#pragma once

#include "base/JsonText.h"
#include "sensor/Field.h"

#include <string_view>
#include <vector>

namespace ipncsdk::sensor {

/// A kind of board and the parameters of its boards and ports.
struct BoardType {
    const char* name;  ///< as records have it, such as "RS485"
    const char* title; ///< Chinese
    bool sublist;      ///< stands among the sub-devices, not among the interfaces
    int slots;         ///< how many interfaces of this kind a device has
    bool shared;       ///< several boards may be at one interface
    std::vector<Field> fields;
    std::vector<Field> inputs;
    std::vector<Field> outputs;     ///< empty together with `!switches`
    bool switches;                  ///< boards can have outputs
    const char* protocol = nullptr; ///< what records have under this name; null: nothing
};

const std::vector<BoardType>& boardTypes();
/// Null for a type that is not known.
const BoardType* findBoardType(std::string_view name);

/// True for boards whose values the client measures in the recordings of alarms and hands in.
bool isHandedIn(std::string_view type);

/// {"sensortypes": [...], "templates": [...]}: what the client builds its dialogs from.
Json boardTypesDocument();

} // namespace ipncsdk::sensor
