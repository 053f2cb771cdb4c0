#pragma once

#include "media/StreamReader.h"
#include "media/loop/LoopLibrary.h"

namespace ipncsdk::media {

/// Serves a recorded loop in real time, over and over.
class LoopReader final : public StreamReader {
public:
    /// The library outlives the reader.
    LoopReader(LoopLibrary& library, LoopKey key);
    StreamError run(ReaderHost& host) override;

private:
    std::shared_ptr<const Gop> await(ReaderHost& host, const Loop& loop, std::size_t number) const;

    LoopLibrary& library_;
    const LoopKey key_;
};

} // namespace ipncsdk::media
