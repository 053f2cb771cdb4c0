#pragma once

#include <QtGlobal>

#include <deque>
#include <optional>
#include <vector>

namespace corvanta::update {

/// How far a download of several files is. A value; the time is handed in.
///
/// Descriptions do not say how large files are. Until the server tells of one, it counts with the size of the file
/// that it replaces, and one without such a file with the mean of the others.
class DownloadMeter final {
public:
    struct Reading {
        int filesDone = 0;
        int files = 0;
        qint64 bytesDone = 0;
        qint64 bytes = 0;               ///< of all files, partly guessed; 0: unknown
        double bytesPerSecond = 0;      ///< of the last seconds
        std::optional<int> secondsLeft; ///< nothing while it cannot be told
    };

    /// `sizes`: of the files that are replaced, bytes, in the order in which they are fetched; nothing where there is
    /// none.
    explicit DownloadMeter(std::vector<std::optional<qint64>> sizes = {});

    /// The current file: bytes received and how many there will be (0: not told). `now` never goes back, ms.
    void update(qint64 now, qint64 received, qint64 total);
    /// The current file is begun anew.
    void fetchAgain();
    /// The current file is here, the next one is the current one.
    void finishFile();

    Reading reading() const;

private:
    struct Sample {
        qint64 time;  ///< ms
        qint64 bytes; ///< that came over the line since the beginning
    };

    std::vector<std::optional<qint64>> sizes_; ///< replaced by what the server told
    std::size_t current_ = 0;
    qint64 finishedBytes_ = 0; ///< of the files before the current one
    qint64 wastedBytes_ = 0;   ///< of tries that were in vain
    qint64 received_ = 0;      ///< of the current file
    std::deque<Sample> samples_;
};

} // namespace corvanta::update
