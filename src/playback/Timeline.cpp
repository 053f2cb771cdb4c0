#include "playback/Timeline.h"

#include <QDateTime>

#include <algorithm>
#include <set>

namespace corvanta::playback {

namespace {

using std::chrono::microseconds;

/// What a name in whole seconds and a rate in whole frames may be wrong by.
constexpr std::chrono::seconds tolerance{2};
constexpr int digitsOfTime = 14;

} // namespace

QDateTime toLocalTime(Moment moment) {
    return QDateTime::fromMSecsSinceEpoch(std::chrono::floor<std::chrono::milliseconds>(moment).count());
}

Moment toMoment(const QDateTime& time) {
    return std::chrono::milliseconds(time.toMSecsSinceEpoch());
}

std::optional<Moment> beginFromName(const QString& fileName) {
    const QString digits = fileName.left(digitsOfTime);
    const bool allDigits = std::all_of(digits.begin(), digits.end(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
    const QDateTime time = QDateTime::fromString(digits, QStringLiteral("yyyyMMddhhmmss"));
    if (!allDigits || !time.isValid())
        return std::nullopt;
    return toMoment(time);
}

Timeline::Timeline(std::vector<Recording> recordings)
    : recordings_(std::move(recordings)) {
    recordings_.erase(std::remove_if(recordings_.begin(), recordings_.end(),
                                     [](const Recording& recording) { return recording.length.count() <= 0; }),
                      recordings_.end());
    std::stable_sort(recordings_.begin(), recordings_.end(),
                     [](const Recording& a, const Recording& b) { return a.begin < b.begin; });
    closeSmallOverlaps();
    cutIntoPieces();
}

void Timeline::closeSmallOverlaps() {
    for (std::size_t index = 1; index < recordings_.size(); ++index) {
        const Moment end = recordings_[index - 1].begin + recordings_[index - 1].length;
        Recording& next = recordings_[index];
        if (next.begin < end && end - next.begin <= tolerance && next.length > tolerance)
            next.begin = end;
    }
}

/// Goes from one begin or end to the next; between two of them the recording that began last is seen.
void Timeline::cutIntoPieces() {
    struct Edge {
        Moment moment;
        bool begins;
        std::size_t recording;
    };
    std::vector<Edge> edges;
    for (std::size_t index = 0; index < recordings_.size(); ++index) {
        edges.push_back({recordings_[index].begin, true, index});
        edges.push_back({recordings_[index].begin + recordings_[index].length, false, index});
    }
    std::stable_sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.moment < b.moment; });
    std::set<std::size_t> running; // recordings are numbered by their begin
    for (std::size_t index = 0; index < edges.size(); ++index) {
        if (edges[index].begins)
            running.insert(edges[index].recording);
        else
            running.erase(edges[index].recording);
        if (!running.empty() && edges[index + 1].moment > edges[index].moment)
            addPiece({edges[index].moment, edges[index + 1].moment}, *running.rbegin());
    }
}

void Timeline::addPiece(Span span, std::size_t recording) {
    if (!pieces_.empty() && pieces_.back().recording == recording && pieces_.back().span.end == span.begin)
        pieces_.back().span.end = span.end;
    else
        pieces_.push_back({span, recording, span.begin - recordings_[recording].begin});
}

std::vector<Span> Timeline::covered() const {
    std::vector<Span> spans;
    spans.reserve(pieces_.size());
    for (const Piece& piece : pieces_)
        spans.push_back(piece.span);
    return unite(std::move(spans), tolerance);
}

Span Timeline::whole() const {
    return pieces_.empty() ? Span{} : Span{pieces_.front().span.begin, pieces_.back().span.end};
}

std::optional<std::size_t> Timeline::pieceAfter(Moment moment) const {
    const auto after = std::upper_bound(pieces_.begin(), pieces_.end(), moment,
                                        [](Moment value, const Piece& piece) { return value < piece.span.begin; });
    if (after == pieces_.end())
        return std::nullopt;
    return static_cast<std::size_t>(after - pieces_.begin());
}

std::optional<std::size_t> Timeline::pieceBefore(Moment moment) const {
    const auto after = std::upper_bound(pieces_.begin(), pieces_.end(), moment,
                                        [](Moment value, const Piece& piece) { return value < piece.span.end; });
    if (after == pieces_.begin())
        return std::nullopt;
    return static_cast<std::size_t>(after - pieces_.begin()) - 1;
}

std::optional<Timeline::Place> Timeline::at(Moment moment) const {
    const auto piece = pieceBefore(moment);
    const std::size_t number = piece ? *piece + 1 : 0;
    if (number >= pieces_.size() || moment < pieces_[number].span.begin)
        return std::nullopt;
    return Place{number, moment - pieces_[number].span.begin + pieces_[number].offset};
}

Moment Timeline::momentOf(const Place& place) const {
    return pieces_[place.piece].span.begin + (place.time - pieces_[place.piece].offset);
}

std::vector<Span> unite(std::vector<Span> spans, microseconds pause) {
    std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.begin < b.begin; });
    std::vector<Span> united;
    for (const Span& span : spans) {
        if (!united.empty() && span.begin - united.back().end <= pause)
            united.back().end = std::max(united.back().end, span.end);
        else
            united.push_back(span);
    }
    return united;
}

} // namespace corvanta::playback
