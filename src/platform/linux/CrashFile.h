#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta::platform {

/// Room for a number in hexadecimal and a zero.
using HexText = std::array<char, 17>;

/// Writes `number` in lower-case hexadecimal without a prefix. Async-signal-safe.
void writeHex(std::uint64_t number, HexText& text);

/// The text file of a crash. Everything is async-signal-safe: it makes system calls and takes no memory. What cannot
/// be written is left out.
class CrashFile final {
public:
    /// Creates `name` or overwrites it. Without success everything else does nothing.
    explicit CrashFile(const char* name);
    ~CrashFile();
    CrashFile(const CrashFile&) = delete;
    CrashFile& operator=(const CrashFile&) = delete;

    void text(std::string_view text);
    void hex(std::uint64_t number);
    void decimal(std::uint64_t number);

    /// Copies the process's list of mappings, which names every loaded module with its addresses.
    void modules();

    /// Names the module that `address` lies in and where in the module's file, as "module+offset", or "?".
    void place(std::uint64_t address);

private:
    int descriptor_;
};

} // namespace corvanta::platform
