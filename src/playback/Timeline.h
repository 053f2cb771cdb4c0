#pragma once

#include <QString>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

class QDateTime;

namespace corvanta::playback {

/// A moment: microseconds since the beginning of 1970, UTC.
using Moment = std::chrono::microseconds;

/// From `begin` to before `end`.
struct Span {
    Moment begin{0};
    Moment end{0};
    friend bool operator==(const Span&, const Span&) = default;
};

QDateTime toLocalTime(Moment moment);
Moment toMoment(const QDateTime& time);

/// When a recording begins, by its file's name ("yyyyMMddhhmmss", local time, in front); nothing when it tells none.
std::optional<Moment> beginFromName(const QString& fileName);

/// What one camera has recorded, as one line of time. Standard types throughout: threads share it, nobody changes it.
class Timeline final {
public:
    /// A file as it was found.
    struct Recording {
        std::filesystem::path file;
        Moment begin{0};
        std::chrono::microseconds length{0};
    };
    /// A stretch of the line that one file is seen on.
    struct Piece {
        Span span;
        std::size_t recording = 0;
        std::chrono::microseconds offset{0}; ///< of the file's time at the piece's begin
    };
    struct Place {
        std::size_t piece = 0;
        std::chrono::microseconds time{0}; ///< of the file
    };

    Timeline() = default;
    /// Files without length are left out. Names tell whole seconds only, so a file that begins up to two seconds
    /// before the end of the one before follows that; where files overlap by more, the one that began later is seen.
    explicit Timeline(std::vector<Recording> recordings);

    const std::vector<Recording>& recordings() const { return recordings_; }
    /// In the order of time, without overlaps.
    const std::vector<Piece>& pieces() const { return pieces_; }
    /// Where there is something, neighbouring pieces as one; pauses of up to two seconds are none.
    std::vector<Span> covered() const;
    bool isEmpty() const { return pieces_.empty(); }
    /// From the first begin to the last end.
    Span whole() const;

    /// What is seen at a moment; nothing in a gap.
    std::optional<Place> at(Moment moment) const;
    /// The first piece that begins after a moment, the last one that ended by then.
    std::optional<std::size_t> pieceAfter(Moment moment) const;
    std::optional<std::size_t> pieceBefore(Moment moment) const;
    /// The moment of a file's time within a piece.
    Moment momentOf(const Place& place) const;

private:
    void closeSmallOverlaps();
    void cutIntoPieces();
    void addPiece(Span span, std::size_t recording);

    std::vector<Recording> recordings_; ///< by begin
    std::vector<Piece> pieces_;
};

/// Spans in the order of time, those that touch or overlap, or are no more than `pause` apart, as one.
std::vector<Span> unite(std::vector<Span> spans, std::chrono::microseconds pause);

} // namespace corvanta::playback
