#pragma once

#include "media/StreamReader.h"
#include "media/loop/LoopLibrary.h"
#include "media/sound/Talk.h"

#include <memory>

namespace ipncsdk::media {

/// Serves a recorded loop in real time, over and over.
class LoopReader final : public StreamReader {
public:
    /// The library outlives the reader. What is said on `line` is heard in the loop's sound.
    LoopReader(LoopLibrary& library, LoopKey key, std::shared_ptr<const TalkLine> line);
    StreamError run(ReaderHost& host) override;

private:
    std::shared_ptr<const Gop> await(ReaderHost& host, const Loop& loop, std::size_t number) const;

    LoopLibrary& library_;
    const LoopKey key_;
    const std::shared_ptr<const TalkLine> line_;
};

} // namespace ipncsdk::media
