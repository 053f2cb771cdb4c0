#include "video/FrameMailbox.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>
#include <vector>

using namespace corvanta::video;
using WriteResult = FrameMailbox::WriteResult;

namespace {

std::vector<std::uint8_t> filled(FrameSize size, std::uint8_t value) {
    return std::vector<std::uint8_t>(byteCount(size), value);
}

bool isWhole(const FrameMailbox::Frame& frame) {
    return std::all_of(frame.data, frame.data + byteCount(frame.size),
                       [&](std::uint8_t byte) { return byte == frame.data[0]; });
}

constexpr FrameSize small{64, 48};
constexpr FrameSize other{32, 66};

} // namespace

class tst_FrameMailbox : public QObject {
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

void tst_FrameMailbox::newestIsTakenOnce() {
    FrameMailbox mailbox;
    QVERIFY(!mailbox.take());
    for (std::uint8_t value = 1; value <= 5; ++value) {
        QCOMPARE(mailbox.write(filled(small, value).data(), small), WriteResult::Written);
    }
    const auto frame = mailbox.take();
    QVERIFY(frame);
    QCOMPARE(frame->data[0], std::uint8_t{5});
    QVERIFY(!mailbox.take());
}

void tst_FrameMailbox::refuses() {
    FrameMailbox mailbox;
    const auto bytes = filled(small, 1);
    QCOMPARE(mailbox.write(nullptr, small), WriteResult::Refused);
    for (const FrameSize size : {FrameSize{0, 48}, FrameSize{64, 0}, FrameSize{63, 48}, FrameSize{64, 47},
                                 FrameSize{maxFrameSide + 2, 2}, FrameSize{2, 0xFFFFFFFEU}}) {
        QCOMPARE(mailbox.write(bytes.data(), size), WriteResult::Refused);
    }
    QVERIFY(!mailbox.take());
}

void tst_FrameMailbox::buffersAreReused() {
    FrameMailbox mailbox;
    std::set<const std::uint8_t*> blocks;
    for (int i = 0; i < 50; ++i) {
        mailbox.write(filled(small, 1).data(), small);
        blocks.insert(mailbox.take()->data);
    }
    QVERIFY(blocks.size() <= 3);
}

void tst_FrameMailbox::sizeChange() {
    FrameMailbox mailbox;
    constexpr FrameSize large{1280, 720};
    constexpr FrameSize quarter{640, 360};
    mailbox.write(filled(large, 1).data(), large);
    QCOMPARE(byteCount(mailbox.take()->size), std::size_t{1382400});
    mailbox.write(filled(quarter, 2).data(), quarter);
    const auto frame = mailbox.take();
    QCOMPARE(byteCount(frame->size), std::size_t{345600});
    QVERIFY(frame->size == quarter);
    QVERIFY(isWhole(*frame)); // under AddressSanitizer also: the block is as large as it says
}

void tst_FrameMailbox::releaseDropsWhatIsInside() {
    FrameMailbox mailbox;
    mailbox.write(filled(small, 1).data(), small);
    mailbox.take();
    mailbox.write(filled(small, 2).data(), small);
    mailbox.release();
    QVERIFY(!mailbox.take());
    mailbox.write(filled(small, 3).data(), small);
    QCOMPARE(mailbox.take()->data[0], std::uint8_t{3});
}

void tst_FrameMailbox::picturesAreNeverTorn() {
    FrameMailbox mailbox;
    std::atomic<bool> ready{false};
    constexpr int count = 20000;
    std::thread writer([&] {
        while (!ready) {
            std::this_thread::yield();
        }
        for (int i = 1; i <= count; ++i) {
            // A new size now and then, a new value each time; the last one is 255 in the small size.
            const FrameSize size = i == count || i / 100 % 2 == 0 ? small : other;
            mailbox.write(filled(size, i == count ? 255 : static_cast<std::uint8_t>(i % 255)).data(), size);
        }
    });
    ready = true;
    bool whole = true;
    std::uint8_t last = 0;
    while (last != 255) {
        if (const auto frame = mailbox.take()) {
            whole = whole && isWhole(*frame);
            last = frame->data[0];
        }
    }
    writer.join();
    QVERIFY(whole);
}

void tst_FrameMailbox::releaseWhileWriting() {
    FrameMailbox mailbox;
    std::atomic<int> running{4};
    std::vector<std::thread> writers;
    for (int id = 0; id < 4; ++id) {
        writers.emplace_back([&mailbox, &running, id] {
            for (int i = 0; i < 5000; ++i) {
                const FrameSize size = (i + id) % 7 == 0 ? other : small;
                mailbox.write(filled(size, static_cast<std::uint8_t>(i)).data(), size);
            }
            --running;
        });
    }
    bool whole = true;
    for (int i = 0; running > 0; ++i) {
        if (const auto frame = mailbox.take()) {
            whole = whole && isWhole(*frame);
        }
        if (i % 5 == 0) {
            mailbox.release();
        }
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    QVERIFY(whole);
    QCOMPARE(mailbox.write(filled(small, 9).data(), small), WriteResult::Written);
    QCOMPARE(mailbox.take()->data[0], std::uint8_t{9});
}

QTEST_GUILESS_MAIN(tst_FrameMailbox)
#include "tst_FrameMailbox.moc"
