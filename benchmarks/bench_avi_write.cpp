// Writing recordings: frames into an AVI file against plain writes of the same chunks and against the ffmpeg command
// that copies the same stream, and what recording 64 streams at once costs.

#include "base/TaskQueue.h"
#include "recording/CodedMessage.h"
#include "storage/avi/AviWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace {

using Bytes = std::span<const std::byte>;
using Frame = std::vector<std::byte>;

constexpr int FramesPerSecond = 25;
constexpr int BytesPerSecond = 4000000 / 8;
constexpr int Streams = 64;
constexpr int Rounds = 9;

double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A stream's worth of frames: one large key frame a second, the rest small.
std::vector<Frame> makeFrames(int seconds) {
    std::mt19937 random(7);
    std::vector<Frame> frames;
    for (int i = 0; i < seconds * FramesPerSecond; ++i) {
        const bool isKey = i % FramesPerSecond == 0;
        const int size = isKey ? BytesPerSecond / 5 : BytesPerSecond * 4 / 5 / (FramesPerSecond - 1);
        Frame frame(static_cast<std::size_t>(size) + random() % 1000, std::byte{0x55});
        const std::byte start[] = {std::byte{0}, std::byte{0}, std::byte{0}, std::byte{1},
                                   isKey ? std::byte{0x67} : std::byte{0x41}};
        std::copy(std::begin(start), std::end(start), frame.begin());
        frames.push_back(std::move(frame));
    }
    return frames;
}

std::size_t byteCount(const std::vector<Frame>& frames) {
    std::size_t result = 0;
    for (const Frame& frame : frames)
        result += frame.size();
    return result;
}

/// Seconds for all frames into a file that is removed afterwards.
double writeAvi(const std::string& path, const std::vector<Frame>& frames) {
    const double before = wallSeconds();
    {
        const auto writer = AviWriter::openOutput(path);
        writer->setVideo(1920, 1080, FramesPerSecond, "H264");
        for (const Frame& frame : frames)
            writer->writeFrame(frame, corvanta::avi::isKeyFrame(frame));
        writer->close();
    }
    const double taken = wallSeconds() - before;
    unlink(path.c_str());
    return taken;
}

/// The same chunks, made before, a write for each.
double writePlain(const std::string& path, const std::vector<Frame>& chunks) {
    const double before = wallSeconds();
    const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
    for (const Frame& chunk : chunks) {
        if (write(file, chunk.data(), chunk.size()) != static_cast<ssize_t>(chunk.size()))
            std::abort();
    }
    close(file);
    const double taken = wallSeconds() - before;
    unlink(path.c_str());
    return taken;
}

std::vector<Frame> chunksOf(const std::vector<Frame>& frames) {
    std::vector<Frame> result;
    for (const Frame& frame : frames) {
        const auto head =
            corvanta::avi::chunkHeader(corvanta::avi::VideoChunk, static_cast<std::uint32_t>(frame.size()));
        Frame chunk(head.begin(), head.end());
        chunk.insert(chunk.end(), frame.begin(), frame.end());
        if (frame.size() % 2 != 0)
            chunk.push_back(std::byte{0});
        result.push_back(std::move(chunk));
    }
    return result;
}

void compareWithWrites(const QTemporaryDir& folder) {
    const std::vector<Frame> frames = makeFrames(300);
    const std::vector<Frame> chunks = chunksOf(frames);
    const std::string path = folder.filePath(QStringLiteral("a.avi")).toStdString();
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < Rounds; ++round) {
        ours.push_back(writeAvi(path, frames));
        theirs.push_back(writePlain(path, chunks));
    }
    const double megabytes = static_cast<double>(byteCount(frames)) / 1e6;
    std::printf("avi_write %.0f MB/s vs plain_write %.0f ratio %.3f\n", megabytes / median(ours),
                megabytes / median(theirs), median(theirs) / median(ours));
}

/// The whole road of ours from a coded stream in memory; the command reads its stream from a file in the cache.
void compareWithFfmpeg(const QTemporaryDir& folder) {
    const QString stream = folder.filePath(QStringLiteral("s.h264"));
    QProcess maker;
    maker.start(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                 QStringLiteral("-i"), QStringLiteral("testsrc2=size=1280x720:rate=25,noise=alls=40:allf=t"),
                 QStringLiteral("-frames:v"), QStringLiteral("750"), QStringLiteral("-c:v"),
                 QStringLiteral("libx264"), QStringLiteral("-preset"), QStringLiteral("ultrafast"),
                 QStringLiteral("-b:v"), QStringLiteral("20M"), QStringLiteral("-x264-params"),
                 QStringLiteral("keyint=25:scenecut=0:bframes=0:repeat-headers=1:slices=1"), stream});
    maker.waitForFinished(-1);
    QFile file(stream);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();
    std::vector<Frame> frames;
    const QByteArray startCode("\0\0\0\1", 4);
    int begin = -1;
    for (int at = bytes.indexOf(startCode);; at = bytes.indexOf(startCode, at + 4)) {
        const int type = at < 0 ? 7 : bytes[at + 4] & 0x1f;
        if (type == 7 || type == 1) {
            if (begin >= 0) {
                const auto* from = reinterpret_cast<const std::byte*>(bytes.constData());
                frames.emplace_back(from + begin, from + (at < 0 ? bytes.size() : at));
            }
            begin = at;
        }
        if (at < 0)
            break;
    }
    std::vector<double> ours;
    std::vector<double> theirs;
    const QString copy = folder.filePath(QStringLiteral("copy.avi"));
    for (int round = 0; round < Rounds; ++round) {
        ours.push_back(writeAvi(folder.filePath(QStringLiteral("b.avi")).toStdString(), frames));
        const double before = wallSeconds();
        QProcess::execute(QStringLiteral("ffmpeg"),
                          {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-i"),
                           stream, QStringLiteral("-c"), QStringLiteral("copy"), copy});
        theirs.push_back(wallSeconds() - before);
    }
    const double megabytes = static_cast<double>(byteCount(frames)) / 1e6;
    std::printf("avi_write_copy %.0f MB/s vs ffmpeg_copy %.0f ratio %.3f\n", megabytes / median(ours),
                megabytes / median(theirs), median(theirs) / median(ours));
}

/// What 64 streams cost from the SDK's callback to the file: message read, frame copied, queue, file.
void recordMany(const QTemporaryDir& folder) {
    constexpr int seconds = 5;
    const std::vector<Frame> frames = makeFrames(seconds);
    TaskQueue queue;
    std::vector<std::unique_ptr<AviWriter>> writers;
    for (int i = 0; i < Streams; ++i) {
        writers.push_back(AviWriter::openOutput(folder.filePath(QStringLiteral("many%1.avi").arg(i)).toStdString()));
        writers.back()->setVideo(1920, 1080, FramesPerSecond, "H264");
    }
    const double before = cpuSeconds();
    for (const Frame& frame : frames) {
        const std::string message = R"({"type":"videodata","reqid":7,"data":)" +
                                    std::to_string(reinterpret_cast<std::intptr_t>(frame.data())) + R"(,"len":)" +
                                    std::to_string(frame.size()) + "}";
        for (auto& writer : writers) {
            const auto parsed = corvanta::recording::parseCodedMessage(message);
            const Bytes data = std::get<corvanta::recording::CodedFrame>(parsed).data;
            const auto block = std::make_shared<Frame>(data.begin(), data.end());
            queue.post([block, &writer] { writer->writeFrame(*block, corvanta::avi::isKeyFrame(*block)); });
        }
        queue.drain();
    }
    const double cores = (cpuSeconds() - before) / seconds;
    std::printf("avi_record_64 %.3f cores vs aim 0.100 ratio %.3f\n", cores, cores / 0.1);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    compareWithWrites(folder);
    compareWithFfmpeg(folder);
    recordMany(folder);
    return 0;
}
