// A picture's way from the SDK's callback to the renderer's buffer (message parsed, buffer written, taken, copied)
// against two plain copies of the same size.

#include "video/AvMessage.h"
#include "video/FrameBuffer.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace video = corvanta::video;

namespace {

constexpr video::FrameSize Light{640, 360};

std::string messageFor(const std::vector<std::uint8_t>& picture) {
    return R"({"type":"decodevideodata","reqid":7,"data":)" +
           std::to_string(reinterpret_cast<std::intptr_t>(picture.data())) + R"(,"w":640,"h":360})";
}

void framePath(benchmark::State& state) {
    const std::vector<std::uint8_t> picture(video::byteCount(Light), 77);
    std::vector<std::uint8_t> renderer(picture.size());
    const std::string message = messageFor(picture);
    video::FrameBuffer buffer;
    for (auto _ : state) {
        const video::AvMessage parsed = video::parseAvMessage(message);
        const auto& frame = std::get<video::AvFrame>(parsed);
        buffer.write(frame.data, frame.size);
        const auto taken = buffer.take();
        std::memcpy(renderer.data(), taken->data(), renderer.size());
        benchmark::DoNotOptimize(renderer.data());
        benchmark::ClobberMemory();
    }
}

void twoCopies(benchmark::State& state) {
    const std::vector<std::uint8_t> picture(video::byteCount(Light), 77);
    std::vector<std::uint8_t> between(picture.size());
    std::vector<std::uint8_t> renderer(picture.size());
    for (auto _ : state) {
        std::memcpy(between.data(), picture.data(), picture.size());
        benchmark::DoNotOptimize(between.data());
        benchmark::ClobberMemory();
        std::memcpy(renderer.data(), between.data(), renderer.size());
        benchmark::DoNotOptimize(renderer.data());
        benchmark::ClobberMemory();
    }
}

/// Keeps the median of each, and prints nothing itself.
class Medians final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median")
                nanoseconds[run.run_name.function_name] = run.GetAdjustedCPUTime();
        }
    }
    std::map<std::string, double> nanoseconds;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (auto* function :
         {benchmark::RegisterBenchmark("ours", framePath), benchmark::RegisterBenchmark("theirs", twoCopies)})
        function->Repetitions(15)->ReportAggregatesOnly(true)->MinTime(0.1);
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    const double ours = medians.nanoseconds["ours"];
    const double theirs = medians.nanoseconds["theirs"];
    std::printf("frame_path %.0f ns vs two_copies %.0f ratio %.3f\n", ours, theirs, ours / theirs);
    return 0;
}
