#pragma once

#include <filesystem>

namespace ipncsdk {

/// The folder that this library (or, linked into a program, that program) was loaded from; empty when the system does
/// not say. Any thread.
std::filesystem::path libraryFolder();

} // namespace ipncsdk
