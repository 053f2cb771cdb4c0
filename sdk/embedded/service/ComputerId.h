#pragma once

#include <filesystem>
#include <string>

namespace ipncsdk::service {

/// Marks the machine (the data root, to be exact) for bindings and checked codes: random, kept in
/// `config/computer.id` below `root` from the first start on. Where the file can't be made, one that holds for this
/// run.
std::string computerId(const std::filesystem::path& root);

} // namespace ipncsdk::service
