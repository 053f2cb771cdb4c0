#include "storage/avi/AviWriter.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

namespace avi = corvanta::avi;
using corvanta::platform::RawFile;

namespace {

constexpr std::size_t IndexStep = 4096; // entries

std::atomic<AviWriter::Error>& theLastError() {
    static std::atomic<AviWriter::Error> value{AviWriter::Error::None};
    return value;
}

} // namespace

AviWriter::Error AviWriter::lastError() {
    return theLastError().load();
}

int AviWriter::fail(Error error) {
    theLastError().store(error);
    return -1;
}

std::unique_ptr<AviWriter> AviWriter::openOutput(const std::filesystem::path& path) {
    auto file = RawFile::open(path, RawFile::Access::Create);
    if (file == nullptr) {
        fail(Error::Open);
        return nullptr;
    }
    static constexpr std::array<std::byte, avi::HeaderSize> placeholder{};
    if (!file->write(placeholder)) {
        fail(Error::Write);
        return nullptr;
    }
    std::unique_ptr<AviWriter> writer(new (std::nothrow) AviWriter(std::move(file)));
    if (writer == nullptr)
        fail(Error::OutOfMemory);
    return writer;
}

AviWriter::~AviWriter() {
    if (file_ != nullptr)
        close();
}

int AviWriter::setVideo(std::uint32_t width, std::uint32_t height, double framesPerSecond,
                        std::string_view compressor) {
    if (file_ == nullptr)
        return fail(Error::ReadOnly);
    header_.width = width;
    header_.height = height;
    header_.framesPerSecond = framesPerSecond;
    header_.compressor = avi::compressorFromText(compressor);
    header_.moviEnd = writePosition_;
    header_.fileSize = writePosition_;
    return writeHeader() ? 0 : fail(Error::Write);
}

int AviWriter::addAudioTrack(const avi::AudioTrack& track) {
    if (file_ == nullptr)
        return fail(Error::ReadOnly);
    header_.tracks.push_back(track);
    return writeHeader() ? static_cast<int>(header_.tracks.size()) : fail(Error::Write);
}

bool AviWriter::writeHeader() {
    const bool written = file_->seek(0) && file_->write(avi::headerBytes(header_));
    return file_->seek(writePosition_) && written;
}

int AviWriter::writeFrame(Bytes frame, bool isKeyFrame) {
    const std::uint32_t position = writePosition_;
    if (writeChunk(avi::VideoChunk, isKeyFrame ? avi::FlagKeyFrame : 0, frame) != 0)
        return -1;
    ++header_.videoFrames;
    lastFramePosition_ = position;
    lastFrameLength_ = static_cast<std::uint32_t>(frame.size());
    largestChunk_ = std::max(largestChunk_, lastFrameLength_);
    return 0;
}

int AviWriter::writeAudio(int track, Bytes sound) {
    if (file_ == nullptr || track < 1 || track > static_cast<int>(header_.tracks.size()))
        return fail(Error::ReadOnly);
    if (writeChunk(avi::audioChunk(track), 0, sound) != 0)
        return -1;
    header_.tracks[static_cast<std::size_t>(track) - 1].bytesWritten += static_cast<std::uint32_t>(sound.size());
    return 0;
}

int AviWriter::writeChunk(const avi::FourCharacters& chunk, std::uint32_t flags, Bytes data) {
    if (file_ == nullptr)
        return fail(Error::ReadOnly);
    const std::uint64_t indexSize = (index_.size() + 2) * avi::IndexEntrySize;
    if (indexSize + writePosition_ + data.size() >= avi::SizeLimit)
        return fail(Error::SizeLimit);
    const auto length = static_cast<std::uint32_t>(data.size());
    try {
        if (index_.size() == index_.capacity())
            index_.reserve(index_.size() + IndexStep);
        index_.push_back({chunk, flags, writePosition_, length});
    } catch (const std::bad_alloc&) {
        return fail(Error::OutOfMemory);
    }
    static constexpr std::array<std::byte, 1> zero{};
    const auto head = avi::chunkHeader(chunk, length);
    const std::array<Bytes, 3> parts{Bytes(head), data, Bytes(zero).first(length & 1U)};
    if (!file_->write(parts)) {
        // What was written of it is written over by the next one, and the index does not know it.
        index_.pop_back();
        file_->seek(writePosition_);
        return fail(Error::Write);
    }
    writePosition_ += static_cast<std::uint32_t>(avi::ChunkHeaderSize) + avi::padded(length);
    return 0;
}

int AviWriter::close() {
    if (file_ == nullptr)
        return fail(Error::ReadOnly);
    const std::vector<std::byte> index = avi::indexBytes(index_);
    header_.hasIndex = file_->seek(writePosition_) && file_->write(index);
    header_.moviEnd = writePosition_;
    if (header_.hasIndex)
        writePosition_ += static_cast<std::uint32_t>(index.size());
    header_.fileSize = writePosition_;
    // Behind it lies at most what a failed write has left.
    file_->truncate(writePosition_);
    const bool headed = writeHeader();
    const bool indexed = header_.hasIndex;
    file_.reset();
    if (!headed)
        return fail(Error::Header);
    return indexed ? 0 : fail(Error::Index);
}
