#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// Different texts, numbered in the order of their first coming. Keeps views: the texts outlive it.
class SharedStrings final {
public:
    /// The number of `text`, a new one if it has not come before.
    std::uint32_t add(std::u16string_view text);

    std::uint32_t count() const { return static_cast<std::uint32_t>(texts_.size()); }
    std::u16string_view text(std::uint32_t number) const { return texts_[number]; }

private:
    /// A place of the table: free while `number` is `Free`.
    struct Place {
        std::uint32_t hash = 0;
        std::uint32_t number = Free;
    };
    static constexpr std::uint32_t Free = 0xFFFFFFFF;

    std::size_t findPlace(std::uint32_t hash, std::u16string_view text) const;
    void grow();

    std::vector<std::u16string_view> texts_;
    std::vector<Place> table_; ///< its size is a power of two, and at most two thirds of it are taken
};
