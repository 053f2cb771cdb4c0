#include "media/AnnexB.h"

#include <algorithm>
#include <array>

namespace ipncsdk::media {

namespace {

using Span = std::span<const std::uint8_t>;

constexpr std::size_t largestParameterSet = 4096;

enum UnitType : unsigned {
    Slice = 1,
    SlicePartC = 4,
    Idr = 5,
    Sps = 7,
    Pps = 8,
    Delimiter = 9,
    Filler = 12,
    LastKnown = 23
};

unsigned typeOf(Span unit) {
    return unit[0] & 0x1FU;
}

/// Where the next start code (00 00 01) begins at or after `from`; the size when there is none.
std::size_t nextStartCode(Span bytes, std::size_t from) {
    for (std::size_t at = from; at + 3 <= bytes.size(); ++at) {
        if (bytes[at + 2] > 1) {
            at += 2; // neither this byte nor the two before it can begin a start code
        } else if (bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1) {
            return at;
        }
    }
    return bytes.size();
}

/// Visits the units between start codes; `fromStart` says that one begins with the first byte already.
template <typename Visitor>
void splitAtStartCodes(Span bytes, bool fromStart, Visitor& visit) {
    std::size_t code = fromStart ? 0 : nextStartCode(bytes, 0);
    std::size_t begin = fromStart ? 0 : code + 3;
    while (begin < bytes.size()) {
        code = nextStartCode(bytes, begin);
        std::size_t end = code;
        while (end > begin && bytes[end - 1] == 0) {
            --end; // zeros before a start code belong to it, and a unit never ends in one
        }
        if (end > begin) {
            visit(bytes.subspan(begin, end - begin));
        }
        begin = code + 3;
    }
}

/// Reads the Exp-Golomb number (ISO 14496-10, 9.1) that starts at bit `bit`; nothing when it is cut off or longer
/// than a parameter set's number can be.
std::optional<unsigned> golomb(Span unit, std::size_t bit) {
    const auto bitAt = [&](std::size_t index) -> unsigned {
        return index / 8 < unit.size() ? (unit[index / 8] >> (7 - index % 8)) & 1U : 0U;
    };
    std::size_t zeros = 0;
    while (bitAt(bit + zeros) == 0) {
        if (++zeros > 8) {
            return std::nullopt;
        }
    }
    unsigned value = 0;
    for (std::size_t index = 0; index <= zeros; ++index) {
        value = value << 1 | bitAt(bit + zeros + index);
    }
    return value - 1;
}

} // namespace

template <typename Visitor>
void AnnexB::forEachUnit(Span input, Visitor&& visit) const {
    if (lengthSize_ == 0) {
        splitAtStartCodes(input, false, visit);
        return;
    }
    while (input.size() > lengthSize_) {
        std::size_t length = 0;
        for (std::size_t index = 0; index < lengthSize_; ++index) {
            length = length << 8 | input[index];
        }
        input = input.subspan(lengthSize_);
        length = std::min(length, input.size());
        // A start code inside would be taken for one by every reader later, so it is treated as one here.
        splitAtStartCodes(input.first(length), true, visit);
        input = input.subspan(length);
    }
}

void AnnexB::remember(Span unit) {
    const bool isSps = typeOf(unit) == Sps;
    // An SPS has its profile, constraints and level before its number.
    const auto number = golomb(unit, isSps ? 32 : 8);
    if (!number || unit.size() > largestParameterSet || *number > (isSps ? 31U : 255U)) {
        return;
    }
    Bytes& stored = (isSps ? sps_ : pps_)[*number];
    stored.assign(unit.begin(), unit.end());
    if (isSps) {
        stored[0] = 0x67;
    }
}

void AnnexB::append(Span unit) {
    constexpr std::array<std::uint8_t, 4> startCode{0, 0, 0, 1};
    output_.insert(output_.end(), startCode.begin(), startCode.end());
    const std::size_t header = output_.size();
    output_.insert(output_.end(), unit.begin(), unit.end());
    if (typeOf(unit) == Sps) {
        output_[header] = 0x67;
    }
}

bool AnnexB::setHeader(Span header) {
    const auto take = [this](Span unit) {
        if (typeOf(unit) == Sps || typeOf(unit) == Pps) {
            remember(unit);
        }
    };
    if (header.size() >= 7 && header[0] == 1) {
        const std::size_t lengthSize = (header[4] & 3U) + 1;
        Span rest = header.subspan(5);
        for (const unsigned mask : {0x1FU, 0xFFU}) {
            if (rest.empty()) {
                break;
            }
            unsigned count = rest[0] & mask;
            rest = rest.subspan(1);
            for (; count > 0 && rest.size() > 2; --count) {
                const std::size_t length = std::min<std::size_t>(rest[0] * 256U + rest[1], rest.size() - 2);
                splitAtStartCodes(rest.subspan(2, length), true, take);
                rest = rest.subspan(2 + length);
            }
        }
        lengthSize_ = lengthSize;
        return true;
    }
    if (nextStartCode(header, 0) == header.size()) {
        return false;
    }
    lengthSize_ = 0;
    splitAtStartCodes(header, false, take);
    return true;
}

std::optional<AnnexB::AccessUnit> AnnexB::normalise(Span input, bool keyHint) {
    bool picture = false;
    bool idr = false;
    forEachUnit(input, [&](Span unit) {
        const unsigned type = typeOf(unit);
        if ((unit[0] & 0x80U) != 0) {
            return;
        }
        picture = picture || (type >= Slice && type <= Idr);
        idr = idr || type == Idr;
        if (type == Sps || type == Pps) {
            remember(unit);
        }
    });
    const bool key = idr || keyHint;
    if (!picture || (key && (sps_.empty() || pps_.empty()))) {
        return std::nullopt;
    }
    output_.clear();
    if (key) {
        for (const auto* sets : {&sps_, &pps_}) {
            for (const auto& [number, unit] : *sets) {
                append(unit);
            }
        }
    }
    forEachUnit(input, [&](Span unit) {
        const unsigned type = typeOf(unit);
        const bool parameterSet = type == Sps || type == Pps;
        const bool wanted =
            (unit[0] & 0x80U) == 0 && type != 0 && type <= LastKnown && type != Delimiter && type != Filler;
        if (wanted && !(key && parameterSet)) {
            append(unit);
        }
    });
    return AccessUnit{output_, key};
}

} // namespace ipncsdk::media
