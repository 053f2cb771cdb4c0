#include "video/FrameBuffer.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>
#include <vector>

using namespace corvanta::video;
using WriteResult = FrameBuffer::WriteResult;

namespace {

std::vector<std::uint8_t> filled(FrameSize size, std::uint8_t value) {
    return std::vector<std::uint8_t>(byteCount(size), value);
}

bool isWhole(const FrameBuffer::Picture& frame) {
    return std::all_of(frame.data(), frame.data() + byteCount(frame.size()),
                       [&](std::uint8_t byte) { return byte == frame.data()[0]; });
}

constexpr FrameSize small{64, 48};
constexpr FrameSize other{32, 66};

} // namespace

class tst_FrameBuffer : public QObject {
    Q_OBJECT
private slots:
    void newestIsTakenOnce();
    void refuses();
    void buffersAreReused();
    void sizeChange();
    void releaseDropsWhatIsInside();
    void picturesAreNeverTorn();
    void releaseWhileWriting();
};

void tst_FrameBuffer::newestIsTakenOnce() {
    FrameBuffer buffer;
    QVERIFY(!buffer.take());
    for (std::uint8_t value = 1; value <= 5; ++value) {
        QCOMPARE(buffer.write(filled(small, value).data(), small),
                 value == 1 ? WriteResult::Written : WriteResult::Overwritten);
    }
    const auto frame = buffer.take();
    QVERIFY(frame);
    QCOMPARE(frame->data()[0], std::uint8_t{5});
    QVERIFY(!buffer.take());
}

void tst_FrameBuffer::refuses() {
    FrameBuffer buffer;
    const auto bytes = filled(small, 1);
    QCOMPARE(buffer.write(nullptr, small), WriteResult::Refused);
    for (const FrameSize size : {FrameSize{0, 48}, FrameSize{64, 0}, FrameSize{63, 48}, FrameSize{64, 47},
                                 FrameSize{maxFrameSide + 2, 2}, FrameSize{2, 0xFFFFFFFEU}}) {
        QCOMPARE(buffer.write(bytes.data(), size), WriteResult::Refused);
    }
    QVERIFY(!buffer.take());
}

void tst_FrameBuffer::buffersAreReused() {
    FrameBuffer buffer;
    std::set<const std::uint8_t*> blocks;
    for (int i = 0; i < 50; ++i) {
        buffer.write(filled(small, 1).data(), small);
        blocks.insert(buffer.take()->data());
    }
    QCOMPARE(blocks.size(), std::size_t{1});
    // Written while the reader has it: the writer goes to a second one, and the newer picture stays.
    for (int i = 0; i < 50; ++i) {
        buffer.write(filled(small, 1).data(), small);
        const auto held = buffer.take();
        QCOMPARE(buffer.write(filled(small, 2).data(), small), WriteResult::Written);
        QCOMPARE(held->data()[0], std::uint8_t{1});
        blocks.insert(held->data());
    }
    QCOMPARE(buffer.take()->data()[0], std::uint8_t{2});
    QCOMPARE(blocks.size(), std::size_t{2});
}

void tst_FrameBuffer::sizeChange() {
    FrameBuffer buffer;
    constexpr FrameSize large{1280, 720};
    constexpr FrameSize quarter{640, 360};
    buffer.write(filled(large, 1).data(), large);
    QCOMPARE(byteCount(buffer.take()->size()), std::size_t{1382400});
    buffer.write(filled(quarter, 2).data(), quarter);
    const auto frame = buffer.take();
    QCOMPARE(byteCount(frame->size()), std::size_t{345600});
    QVERIFY(frame->size() == quarter);
    QVERIFY(isWhole(*frame)); // under AddressSanitizer also: the block is as large as it says
}

void tst_FrameBuffer::releaseDropsWhatIsInside() {
    FrameBuffer buffer;
    buffer.write(filled(small, 1).data(), small);
    buffer.take();
    buffer.write(filled(small, 2).data(), small);
    buffer.release();
    QVERIFY(!buffer.take());
    buffer.write(filled(small, 3).data(), small);
    QCOMPARE(buffer.take()->data()[0], std::uint8_t{3});
}

void tst_FrameBuffer::picturesAreNeverTorn() {
    FrameBuffer buffer;
    std::atomic<bool> ready{false};
    constexpr int count = 20000;
    std::thread writer([&] {
        while (!ready) {
            std::this_thread::yield();
        }
        for (int i = 1; i <= count; ++i) {
            // A new size now and then, a new value each time; the last one is 255 in the small size.
            const FrameSize size = i == count || i / 100 % 2 == 0 ? small : other;
            buffer.write(filled(size, i == count ? 255 : static_cast<std::uint8_t>(i % 255)).data(), size);
        }
    });
    ready = true;
    bool whole = true;
    std::uint8_t last = 0;
    while (last != 255) {
        if (const auto frame = buffer.take()) {
            whole = whole && isWhole(*frame);
            last = frame->data()[0];
        }
    }
    writer.join();
    QVERIFY(whole);
}

void tst_FrameBuffer::releaseWhileWriting() {
    FrameBuffer buffer;
    std::atomic<int> running{4};
    std::vector<std::thread> writers;
    for (int id = 0; id < 4; ++id) {
        writers.emplace_back([&buffer, &running, id] {
            for (int i = 0; i < 5000; ++i) {
                const FrameSize size = (i + id) % 7 == 0 ? other : small;
                buffer.write(filled(size, static_cast<std::uint8_t>(i)).data(), size);
            }
            --running;
        });
    }
    bool whole = true;
    for (int i = 0; running > 0; ++i) {
        if (const auto frame = buffer.take()) {
            whole = whole && isWhole(*frame);
        }
        if (i % 5 == 0) {
            buffer.release();
        }
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    QVERIFY(whole);
    buffer.release();
    QCOMPARE(buffer.write(filled(small, 9).data(), small), WriteResult::Written);
    QCOMPARE(buffer.take()->data()[0], std::uint8_t{9});
}

QTEST_GUILESS_MAIN(tst_FrameBuffer)
#include "tst_FrameBuffer.moc"
