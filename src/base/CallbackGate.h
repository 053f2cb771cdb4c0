#pragma once

#include <atomic>
#include <memory>

/// Stands between callbacks of the SDK and the object that they use. Once it is closed no callback gets through,
/// and closing waits for those that are inside.
///
/// Passing costs an SDK thread two atomic operations and never makes it wait; only the thread that closes waits.
/// Shared between the owner and the callbacks (`std::shared_ptr`), because callbacks may outlive the owner.
class CallbackGate final {
public:
    CallbackGate() = default;
    CallbackGate(const CallbackGate&) = delete;
    CallbackGate& operator=(const CallbackGate&) = delete;

    /// One passage. True inside an `if` while the gate is open; holds the gate until it is destroyed.
    class Passage final {
    public:
        explicit Passage(CallbackGate& gate)
            : gate_(gate)
            , open_(gate.enter()) {}
        ~Passage() { gate_.leave(); }
        Passage(const Passage&) = delete;
        Passage& operator=(const Passage&) = delete;
        explicit operator bool() const { return open_; }

    private:
        CallbackGate& gate_;
        bool open_;
    };

    /// Whether the gate is open; certain only on the thread that would close it.
    bool isOpen() const { return (inside_.load(std::memory_order_acquire) & Closed) == 0; }

    /// Returns when every passage that had begun before the call has ended; others may begin meanwhile. What the
    /// caller has published before, every later passage sees. Not to be called from inside a passage.
    void awaitPresent();

    /// Closes the gate for ever and returns when nobody is inside. Not to be called from inside a passage.
    void close();

private:
    bool enter();
    void leave();

    static constexpr int Closed = 1 << 30;
    std::atomic<int> inside_{0}; ///< number of passages, plus `Closed`
};
