#include "media/loop/FontFile.h"

#include <limits>

namespace ipncsdk::media {

FontFile::FontFile(const std::filesystem::path& path)
    : file_(path, std::ios::binary) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error || size > std::numeric_limits<unsigned long>::max())
        file_.close();
    else
        stream_.size = static_cast<unsigned long>(size);
    stream_.descriptor.pointer = &file_;
    stream_.read = read;
}

FT_Face FontFile::open(FT_Library library, FT_Long face) {
    if (!file_.is_open())
        return nullptr;
    FT_Open_Args arguments{};
    arguments.flags = FT_OPEN_STREAM;
    arguments.stream = &stream_;
    FT_Face result = nullptr;
    return FT_Open_Face(library, &arguments, face, &result) == 0 ? result : nullptr;
}

unsigned long FontFile::read(FT_Stream stream, unsigned long offset, unsigned char* buffer, unsigned long count) {
    auto& file = *static_cast<std::ifstream*>(stream->descriptor.pointer);
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    if (count == 0) // a question for whether there is anything: 0 says yes
        return file.good() ? 0 : 1;
    file.read(reinterpret_cast<char*>(buffer), static_cast<std::streamsize>(count));
    return static_cast<unsigned long>(file.gcount());
}

} // namespace ipncsdk::media
