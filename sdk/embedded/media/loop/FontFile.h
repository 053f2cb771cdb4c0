#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <filesystem>
#include <fstream>

namespace ipncsdk::media {

/// A font that FreeType reads by our own file: it opens files by the system's old names itself, which on Windows
/// cannot say every path. Outlives the face.
class FontFile final {
public:
    explicit FontFile(const std::filesystem::path& path);
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;

    /// A face of it, the caller's; null when this is no font.
    FT_Face open(FT_Library library, FT_Long face);

private:
    static unsigned long read(FT_Stream stream, unsigned long offset, unsigned char* buffer, unsigned long count);

    std::ifstream file_;
    FT_StreamRec stream_{};
};

} // namespace ipncsdk::media
