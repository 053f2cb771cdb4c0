// Decodes streams in real time and drops the pictures, a thread each: wall_decoders COUNT FILE...
//
// Stream n plays file n modulo their number, over and over, on a clock of its own. Says "open" when each stream has
// given a picture, answers each line of the standard input with "counts PICTURES 0 PICTURES", ends with its end.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::atomic<bool> stopping{false};
std::atomic<long> pictures{0};
std::atomic<int> running{0};

/// One file, played for ever.
class Player final {
public:
    explicit Player(std::string file)
        : file_(std::move(file)) {}
    ~Player() {
        av_frame_free(&frame_);
        av_packet_free(&packet_);
        avcodec_free_context(&decoder_);
        avformat_close_input(&input_);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void play() {
        if (!open()) {
            std::cerr << "cannot play " << file_ << '\n';
            std::_Exit(1);
        }
        auto start = Clock::now();
        while (!stopping) {
            const auto length = playOnce(start);
            start += length;
            av_seek_frame(input_, stream_, 0, AVSEEK_FLAG_BACKWARD);
            avcodec_flush_buffers(decoder_);
        }
    }

private:
    bool open() {
        if (avformat_open_input(&input_, file_.c_str(), nullptr, nullptr) < 0 ||
            avformat_find_stream_info(input_, nullptr) < 0)
            return false;
        const AVCodec* codec = nullptr;
        stream_ = av_find_best_stream(input_, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
        if (stream_ < 0)
            return false;
        decoder_ = avcodec_alloc_context3(codec);
        avcodec_parameters_to_context(decoder_, input_->streams[stream_]->codecpar);
        decoder_->thread_count = 1;
        decoder_->flags |= AV_CODEC_FLAG_LOW_DELAY;
        packet_ = av_packet_alloc();
        frame_ = av_frame_alloc();
        return avcodec_open2(decoder_, codec, nullptr) == 0;
    }

    /// Returns the length of what was played.
    Clock::duration playOnce(Clock::time_point start) {
        Clock::duration end{};
        while (!stopping && av_read_frame(input_, packet_) >= 0) {
            if (packet_->stream_index == stream_) {
                const AVRational base = input_->streams[stream_]->time_base;
                const auto microseconds = [&base](std::int64_t time) {
                    return std::chrono::microseconds(av_rescale_q(time, base, AVRational{1, 1000000}));
                };
                std::this_thread::sleep_until(start + microseconds(packet_->dts));
                decode();
                end = microseconds(packet_->dts + packet_->duration);
            }
            av_packet_unref(packet_);
        }
        return end;
    }

    void decode() {
        avcodec_send_packet(decoder_, packet_);
        while (avcodec_receive_frame(decoder_, frame_) == 0) {
            av_frame_unref(frame_);
            ++pictures;
            if (!seen_) {
                seen_ = true;
                ++running;
            }
        }
    }

    std::string file_;
    AVFormatContext* input_ = nullptr;
    AVCodecContext* decoder_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
    int stream_ = -1;
    bool seen_ = false;
};

} // namespace

int main(int argc, char** argv) {
    const int count = argc > 2 ? std::atoi(argv[1]) : 0;
    if (count <= 0) {
        std::cerr << "wall_decoders COUNT FILE...\n";
        return 2;
    }
    std::vector<std::thread> threads;
    for (int index = 0; index < count; ++index) {
        threads.emplace_back([file = std::string(argv[2 + index % (argc - 2)])] { Player(file).play(); });
        std::this_thread::sleep_for(std::chrono::milliseconds(7)); // so that their clocks differ
    }
    while (running < count)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    std::cout << "open" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        const long now = pictures;
        std::cout << "counts " << now << " 0 " << now << std::endl;
    }
    stopping = true;
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}
