#pragma once

#include <QString>

#include <optional>

/// The program's side of a crash: what the user gets to see. The platform's crash handler writes the file.
namespace corvanta::crashReport {

/// From now on a crash is reported. To be called before other threads start, after `runBoxIfAsked`.
void install();

/// If the program was started as the helper that shows a crash, shows the box and returns the exit code; 2 if the
/// arguments are not an exception code and an address. To be called first thing in main(): the helper must not become
/// a second instance, and a crash of it must not start another. Makes an application object of its own.
std::optional<int> runBoxIfAsked(int argc, char** argv);

/// The text of the box, rich. Both numbers in lower-case hexadecimal without a prefix.
QString text(quint64 code, quint64 address);

} // namespace corvanta::crashReport
