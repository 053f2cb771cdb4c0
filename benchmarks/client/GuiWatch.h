#pragma once

#include <QObject>
#include <QString>

#include <pthread.h>

#include <array>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

/// Watches how long the GUI thread takes to come to a new event: a thread of its own posts one every 10 ms, and while
/// one is not answered for long, asks the GUI thread by a signal where it is.
///
/// Made and destroyed in the GUI thread; one at a time.
class GuiWatch final : public QObject {
public:
    GuiWatch();
    ~GuiWatch() override;

    /// Forgets what it has seen.
    void clear();

    struct Summary {
        std::size_t beats = 0;
        double median = 0; ///< ms, as the others
        double percentile99 = 0;
        double worst = 0;
    };
    Summary summary() const;

    /// Writes the longest blocks into a file, the worst first: "BLOCK MS CPU-MS BEHIND-S", what the GUI thread itself
    /// computed and how long ago it ended, and below it the stacks that were seen, each line "STACK" and its frames
    /// from the innermost on as MODULE+OFFSET=NAME. False when the file can't be written.
    bool write(const QString& path) const;

protected:
    bool event(QEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;
    static constexpr int MostFrames = 48;
    static constexpr std::size_t MostStacks = 4;
    struct Stack {
        int count = 0;
        std::array<void*, MostFrames> frames;
    };
    struct Block {
        double milliseconds;
        double computed; ///< ms of CPU of the GUI thread
        Clock::time_point end;
        std::vector<Stack> stacks;
    };

    void run();
    void beat();
    void askWhere();
    static void onSignal(int number);

    const pthread_t gui_;
    std::thread thread_;
    std::atomic<bool> ends_{false};
    std::mutex mutex_; ///< of the four below
    bool isPending_ = false;
    Clock::time_point sent_;       ///< of the pending beat
    double cpuBefore_ = 0;         ///< ms, of the GUI thread when it was sent
    std::vector<Stack> stacks_;    ///< seen since
    std::vector<float> latencies_; ///< ms
    std::vector<Block> blocks_;    ///< the longest

    static Stack asked_; ///< filled by the signal
    static std::atomic<bool> isFilled_;
};
