#include "media/loop/TextPainter.h"

#include "base/LibraryFolder.h"
#include "media/loop/FontFile.h"

#include <algorithm>
#include <array>
#include <string>

namespace ipncsdk::media {

namespace {

struct FontPlace {
    const char* file;
    FT_Long face; ///< which face of a collection
};

/// Where fonts with Chinese stand, best first; then fonts that at least have Latin letters and digits. A relative
/// path is one from the library's folder.
constexpr std::array fontPlaces{
    FontPlace{"/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc", 2}, // the collection's simplified Chinese
    FontPlace{"/usr/share/fonts/noto-cjk/NotoSansCJK-Regular.ttc", 2},
    FontPlace{"/usr/share/fonts/truetype/wqy/wqy-microhei.ttc", 0},
    FontPlace{"/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf", 0},
    FontPlace{"C:/Windows/Fonts/msyh.ttc", 0},
    FontPlace{"fonts/NotoSansCJK-Regular.ttc", 2},
    FontPlace{"C:/Windows/Fonts/simhei.ttf", 0},
    FontPlace{"C:/Windows/Fonts/simsun.ttc", 0},
    FontPlace{"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 0},
    FontPlace{"C:/Windows/Fonts/arial.ttf", 0},
};

/// Takes one character off the front; 0 stands for damaged bytes, of which one is taken.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    bool good = length == 1 || (first >= 0xC0 && first < 0xF8 && text.size() >= length);
    for (std::size_t index = 1; good && index < length; ++index) {
        good = (byte(index) & 0xC0U) == 0x80;
        character = character << 6 | (byte(index) & 0x3FU);
    }
    good =
        good && character >= smallest[length] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
    text.remove_prefix(good ? length : 1);
    return good ? character : 0;
}

/// Rows of five dots from the top, the left one in the highest bit.
struct DotGlyph {
    char character;
    std::array<std::uint8_t, 7> rows;
};

constexpr std::array dotGlyphs{
    DotGlyph{'0', {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}},
    DotGlyph{'1', {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    DotGlyph{'2', {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}},
    DotGlyph{'3', {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}},
    DotGlyph{'4', {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}},
    DotGlyph{'5', {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}},
    DotGlyph{'6', {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}},
    DotGlyph{'7', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}},
    DotGlyph{'8', {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}},
    DotGlyph{'9', {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}},
    DotGlyph{':', {0x00, 0x04, 0x04, 0x00, 0x04, 0x04, 0x00}},
    DotGlyph{'.', {0x00, 0x00, 0x00, 0x00, 0x00, 0x0C, 0x0C}},
    DotGlyph{'-', {0x00, 0x00, 0x00, 0x1F, 0x00, 0x00, 0x00}},
};

Mask dotLine(std::string_view text, int pixelHeight, int maxWidth) {
    const int dot = std::max(1, pixelHeight / 9);
    Mask mask;
    mask.height = pixelHeight;
    std::vector<const DotGlyph*> glyphs;
    for (const char character : text) {
        const auto found = std::find_if(dotGlyphs.begin(), dotGlyphs.end(),
                                        [&](const DotGlyph& glyph) { return glyph.character == character; });
        if (found != dotGlyphs.end() && (static_cast<int>(glyphs.size()) + 1) * 6 * dot <= maxWidth) {
            glyphs.push_back(&*found);
        }
    }
    mask.width = static_cast<int>(glyphs.size()) * 6 * dot;
    mask.coverage.assign(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height), 0);
    for (int y = 0; y < std::min(7 * dot, mask.height - dot); ++y) {
        for (int x = 0; x < mask.width; ++x) {
            const int column = x / dot % 6;
            const DotGlyph& glyph = *glyphs[static_cast<std::size_t>(x / (6 * dot))];
            const bool set = column < 5 && (glyph.rows[static_cast<std::size_t>(y / dot)] >> (4 - column) & 1) != 0;
            mask.at(x, y + dot) = set ? 255 : 0;
        }
    }
    return mask;
}

/// Lays a glyph's picture into the line, keeping the stronger coverage where glyphs touch.
void layGlyph(Mask& mask, const FT_Bitmap& bitmap, int left, int top) {
    for (int y = 0; y < static_cast<int>(bitmap.rows); ++y) {
        for (int x = 0; x < static_cast<int>(bitmap.width); ++x) {
            if (left + x < 0 || left + x >= mask.width || top + y < 0 || top + y >= mask.height) {
                continue;
            }
            std::uint8_t& cell = mask.at(left + x, top + y);
            cell = std::max(cell, bitmap.buffer[y * bitmap.pitch + x]);
        }
    }
}

} // namespace

class TextPainter::Fonts {
public:
    Fonts() {
        if (FT_Init_FreeType(&library_) != 0) {
            library_ = nullptr;
            return;
        }
        const std::filesystem::path folder = libraryFolder();
        for (const FontPlace& place : fontPlaces) {
            auto file = std::make_unique<FontFile>(folder / place.file);
            if (const FT_Face face = file->open(library_, place.face)) {
                files_.push_back(std::move(file));
                faces_.push_back(face);
            }
        }
    }
    ~Fonts() {
        for (const FT_Face face : faces_) {
            FT_Done_Face(face);
        }
        if (library_ != nullptr) {
            FT_Done_FreeType(library_);
        }
    }
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;

    bool none() const { return faces_.empty(); }

    Mask line(std::string_view text, int pixelHeight, int maxWidth) const {
        for (const FT_Face face : faces_) {
            FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(std::max(1, pixelHeight * 4 / 5)));
        }
        Mask mask;
        mask.width = std::max(0, maxWidth);
        mask.height = pixelHeight;
        mask.coverage.assign(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height), 0);
        const int baseline = pixelHeight * 39 / 50;
        int pen = 0;
        while (!text.empty()) {
            const char32_t character = takeCharacter(text);
            const FT_Face face = character < 0x20 || character == 0x7F ? nullptr : faceFor(character);
            if (face == nullptr || FT_Load_Char(face, character, FT_LOAD_RENDER) != 0) {
                continue;
            }
            const FT_GlyphSlot glyph = face->glyph;
            const int advance = static_cast<int>(glyph->advance.x >> 6);
            if (pen + advance > mask.width) {
                break;
            }
            if (glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
                layGlyph(mask, glyph->bitmap, pen + glyph->bitmap_left, baseline - glyph->bitmap_top);
            }
            pen += advance;
        }
        return cut(mask, pen);
    }

private:
    FT_Face faceFor(char32_t character) const {
        for (const FT_Face face : faces_) {
            if (FT_Get_Char_Index(face, character) != 0) {
                return face;
            }
        }
        return nullptr;
    }

    static Mask cut(const Mask& mask, int width) {
        Mask result;
        result.width = width;
        result.height = mask.height;
        result.coverage.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(mask.height));
        for (int row = 0; row < mask.height; ++row) {
            const auto from = mask.coverage.begin() + static_cast<std::ptrdiff_t>(row) * mask.width;
            result.coverage.insert(result.coverage.end(), from, from + width);
        }
        return result;
    }

    FT_Library library_ = nullptr;
    std::vector<std::unique_ptr<FontFile>> files_;
    std::vector<FT_Face> faces_;
};

TextPainter::TextPainter(bool useFonts)
    : fonts_(useFonts ? std::make_unique<Fonts>() : nullptr) {}

TextPainter::~TextPainter() = default;

Mask TextPainter::line(std::string_view utf8, int pixelHeight, int maxWidth) const {
    if (pixelHeight < 1 || maxWidth < 1) {
        return {};
    }
    if (fonts_ == nullptr || fonts_->none()) {
        return dotLine(utf8, pixelHeight, maxWidth);
    }
    return fonts_->line(utf8, pixelHeight, maxWidth);
}

} // namespace ipncsdk::media
