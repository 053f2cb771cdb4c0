#include "logs/SharedStrings.h"

#include <functional>
#include <utility>

std::uint32_t SharedStrings::add(std::u16string_view text) {
    if (table_.size() * 2 <= texts_.size() * 3)
        grow();
    const std::size_t whole = std::hash<std::u16string_view>()(text);
    const auto hash = static_cast<std::uint32_t>(whole);
    Place& place = table_[findPlace(hash, text)];
    if (place.number == Free) {
        place = {hash, count()};
        texts_.push_back(text);
    }
    return place.number;
}

std::size_t SharedStrings::findPlace(std::uint32_t hash, std::u16string_view text) const {
    const std::size_t mask = table_.size() - 1;
    std::size_t at = hash & mask;
    while (table_[at].number != Free && (table_[at].hash != hash || texts_[table_[at].number] != text))
        at = (at + 1) & mask;
    return at;
}

void SharedStrings::grow() {
    const std::vector<Place> old =
        std::exchange(table_, std::vector<Place>(table_.empty() ? 1024 : table_.size() * 2));
    const std::size_t mask = table_.size() - 1;
    for (const Place& place : old) {
        if (place.number == Free)
            continue;
        std::size_t at = place.hash & mask;
        while (table_[at].number != Free)
            at = (at + 1) & mask;
        table_[at] = place;
    }
}
