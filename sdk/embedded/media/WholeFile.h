#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// Writes a file whole or not at all: the bytes go to a temporary file beside it that then takes its place. False
/// when that failed; an older file is untouched then and nothing temporary is left.
bool writeWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);

/// Reads a file of at most `largest` bytes; empty when it is missing, larger or cannot be read.
std::vector<std::uint8_t> readWholeFile(const std::filesystem::path& file, std::uintmax_t largest);

} // namespace ipncsdk::media
