#pragma once

#include "media/loop/LoopFormat.h"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace ipncsdk::media {

// A loop's file, all numbers little-endian:
//   8 bytes  "IPNCLOOP"
//   u32      format version
//   u32      CRC-32 (IEEE) of everything that follows
//   u32      bytes of the key's text, then the text itself
//   u32      number of frames, then the size of each frame as u32
//   the frames, one after the other, in Annex B form

/// The file's bytes for a whole loop.
std::vector<std::uint8_t> packLoop(const LoopKey& key, std::span<const std::shared_ptr<const Gop>> gops);

/// Takes a file's bytes apart; empty when they are not a whole, undamaged loop of exactly this key.
std::vector<std::shared_ptr<const Gop>> unpackLoop(const LoopKey& key, std::span<const std::uint8_t> file);

} // namespace ipncsdk::media
