#include "playback/ClipExport.h"

#include "playback/ClipWriter.h"
#include "playback/FrameIndex.h"
#include "playback/PacketSource.h"

#include <algorithm>
#include <memory>

namespace corvanta::playback {

namespace {

using std::chrono::microseconds;

/// A part, opened: the entries that are copied, in the order of decoding, and when each is shown.
struct OpenPart {
    std::unique_ptr<PacketSource> source;
    std::unique_ptr<FrameIndex> index;
    std::size_t firstEntry = 0;
    std::size_t lastEntry = 0;
    microseconds early{0}; ///< from the first entry's picture to the part's begin

    std::size_t count() const { return lastEntry - firstEntry + 1; }
};

ExportError openPart(const ClipPart& part, OpenPart& open) {
    OpenError error = OpenError::None;
    open.source = openPackets(part.file, error);
    if (open.source == nullptr)
        return ExportError::Unreadable;
    open.index = std::make_unique<FrameIndex>(*open.source);
    FrameIndex& index = *open.index;
    if (index.frameCount() == 0)
        return ExportError::NothingThere;
    const std::size_t first = index.frameAt(part.from);
    const std::size_t last = std::max(first, index.frameAt(part.to - microseconds(1)));
    const std::size_t group = index.decodedFrom(first);
    open.firstEntry = index.firstEntry(group);
    open.early = std::max(microseconds(0), part.from - index.beginOf(index.firstFrame(group)));
    // What is shown before the last frame may have been decoded after it, and the other way round.
    open.lastEntry = open.firstEntry;
    for (std::size_t frame = index.firstFrame(index.groupOf(last)); frame <= last; ++frame)
        open.lastEntry = std::max(open.lastEntry, index.entryOf(frame));
    return ExportError::None;
}

class Copy final {
public:
    Copy(ClipWriter& writer, std::size_t total, const ExportProgress& progress)
        : writer_(writer)
        , progress_(progress)
        , total_(total) {}

    ExportError add(OpenPart& part) {
        if (const ExportError error = writer_.begin(*part.source->stream().codec, part.source->stream().frameRate);
            error != ExportError::None)
            return error;
        const std::vector<microseconds> shown = showTimes(part);
        std::vector<microseconds> sorted = shown;
        std::sort(sorted.begin(), sorted.end());
        // Of the frames decoded before one at most so many are shown after it; so a frame decoded at the time at
        // which the one so many before it in the row is shown comes early enough.
        const auto ahead = static_cast<std::size_t>(part.index->reordering());
        for (std::size_t place = 0; place < shown.size(); ++place) {
            const microseconds decode = place >= ahead
                                            ? sorted[place - ahead]
                                            : sorted.front() - static_cast<int>(ahead - place) * part.index->period();
            const microseconds base = length_ - sorted.front();
            if (const ExportError error = copy(part, part.firstEntry + place, base + decode, base + shown[place]);
                error != ExportError::None)
                return error;
        }
        length_ += sorted.back() - sorted.front() + part.index->period();
        return ExportError::None;
    }

    microseconds length() const { return length_; }
    std::size_t frames() const { return frames_; }

private:
    static std::vector<microseconds> showTimes(OpenPart& part) {
        std::vector<microseconds> times;
        times.reserve(part.count());
        microseconds last{0};
        for (std::size_t entry = part.firstEntry; entry <= part.lastEntry; ++entry) {
            if (const auto frame = part.index->frameOf(entry))
                last = part.index->beginOf(*frame);
            times.push_back(last); // one that is never shown shares a time
        }
        return times;
    }

    ExportError copy(OpenPart& part, std::size_t entry, microseconds decode, microseconds show) {
        if (!progress_(static_cast<double>(done_++) / static_cast<double>(total_)))
            return ExportError::Cancelled;
        if (!part.source->read(entry, *packet_))
            return ExportError::None; // damaged: the clip goes on without it, as playing does
        ++frames_;
        return writer_.write(*packet_, decode, show);
    }

    ClipWriter& writer_;
    const ExportProgress& progress_;
    std::size_t total_;
    std::size_t done_ = 0;
    std::size_t frames_ = 0;
    microseconds length_{0};
    Packet packet_ = newPacket();
};

} // namespace

std::vector<ClipPart> clipParts(const Timeline& timeline, Span range) {
    std::vector<ClipPart> parts;
    for (const Timeline::Piece& piece : timeline.pieces()) {
        const Moment begin = std::max(range.begin, piece.span.begin);
        const Moment end = std::min(range.end, piece.span.end);
        if (begin < end)
            parts.push_back({timeline.recordings()[piece.recording].file, begin - piece.span.begin + piece.offset,
                             end - piece.span.begin + piece.offset});
    }
    return parts;
}

ExportResult exportClip(const std::vector<ClipPart>& parts, const std::filesystem::path& target,
                        const ExportProgress& progress) {
    ExportResult result;
    std::vector<OpenPart> open(parts.size());
    std::size_t total = 0;
    for (std::size_t number = 0; number < parts.size(); ++number) {
        result.error = openPart(parts[number], open[number]);
        if (result.error != ExportError::None)
            return result;
        total += open[number].count();
    }
    ClipWriter writer(target);
    Copy copy(writer, std::max<std::size_t>(total, 1), progress);
    for (OpenPart& part : open) {
        result.error = copy.add(part);
        if (result.error != ExportError::None)
            return result;
    }
    result.error = writer.finish();
    result.early = open.empty() ? microseconds(0) : open.front().early;
    result.length = copy.length();
    result.frames = copy.frames();
    progress(1);
    return result;
}

} // namespace corvanta::playback
