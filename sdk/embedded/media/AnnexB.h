#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// Brings H.264 access units of any origin into the one form in which they leave the SDK (see `CodedFrame`).
///
/// Takes Annex B with start codes of three or four bytes, or length-prefixed units once `setHeader` was given an
/// "avcC" record. Leaves out access unit delimiters, filler data, reserved types and units with the forbidden bit.
/// Remembers the parameter sets, and puts all of them, SPS before PPS, in front of every key frame. Bytes may be
/// hostile: damaged input gives fewer units, never more than it holds. One object belongs to one stream.
class AnnexB final {
public:
    struct AccessUnit {
        std::span<const std::uint8_t> bytes; ///< valid until the next call
        bool keyFrame = false;
    };

    /// Takes the stream header (ISO 14496-15 "avcC" or Annex B parameter sets). False when it is neither; then
    /// nothing changes.
    bool setHeader(std::span<const std::uint8_t> header);

    /// Rewrites one access unit. `keyHint` is what the container says; an IDR picture counts as key frame anyway.
    /// Nothing comes out of a unit without a picture, or of a key frame while no SPS and PPS are known.
    std::optional<AccessUnit> normalise(std::span<const std::uint8_t> input, bool keyHint = false);

private:
    using Bytes = std::vector<std::uint8_t>;

    template <typename Visitor>
    void forEachUnit(std::span<const std::uint8_t> input, Visitor&& visit) const;
    void remember(std::span<const std::uint8_t> unit);
    void append(std::span<const std::uint8_t> unit);

    std::map<unsigned, Bytes> sps_; ///< by their own numbers, without start code
    std::map<unsigned, Bytes> pps_;
    std::size_t lengthSize_ = 0; ///< bytes of a unit's length; 0 means start codes
    Bytes output_;
};

} // namespace ipncsdk::media
