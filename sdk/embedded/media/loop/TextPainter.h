#pragma once

#include "media/loop/Canvas.h"

#include <memory>
#include <string_view>

namespace ipncsdk::media {

/// Turns text into masks, with the first fonts of the machine that are found. Without any font only digits, ':',
/// '.' and '-' come out, drawn from a table in the program; everything else is left out then.
/// One object belongs to one thread.
class TextPainter final {
public:
    /// Looks for fonts. `useFonts` false leaves the built-in digits alone.
    explicit TextPainter(bool useFonts = true);
    ~TextPainter();
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    /// The text in one line, `pixelHeight` pixels from ascender to descender, at most `maxWidth` pixels wide: what
    /// does not fit is cut off at a character. Damaged UTF-8 and control characters are left out.
    Mask line(std::string_view utf8, int pixelHeight, int maxWidth) const;

private:
    class Fonts;
    std::unique_ptr<Fonts> fonts_;
};

} // namespace ipncsdk::media
