// Seeks in a file at the times that are read from standard input (seconds, one a line), each from asking until the
// picture is there to be shown; milliseconds go to standard output.

#include "playback/CameraPlayer.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <optional>

using corvanta::playback::CameraPlayer;
using corvanta::playback::Moment;

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s FILE THREADS\n", argv[0]);
        return 2;
    }
    std::mutex mutex;
    std::condition_variable changed;
    bool woken = false;
    CameraPlayer player({{argv[1], Moment(0)}}, {std::atoi(argv[2]), 160U << 20}, [&] {
        const std::lock_guard lock(mutex);
        woken = true;
        changed.notify_one();
    });
    const auto wait = [&] {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return woken; });
        woken = false;
    };
    while (player.takeFindings() == nullptr)
        wait();
    double second = 0;
    std::uint64_t serial = 0;
    while (std::cin >> second) {
        const auto begin = std::chrono::steady_clock::now();
        const Moment moment(static_cast<std::int64_t>(second * 1e6));
        player.request({CameraPlayer::Request::Kind::Show, moment, 1, 0, ++serial});
        std::optional<CameraPlayer::Report> report;
        while (!report || !report->isFinal || report->serial != serial) {
            wait();
            if (auto newer = player.takeReport())
                report = std::move(newer);
        }
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
        if (report->picture == nullptr)
            return 1;
        std::printf("%.3f %.6f\n", taken.count(), static_cast<double>(report->moment.count()) / 1e6);
        std::fflush(stdout);
    }
    return 0;
}
