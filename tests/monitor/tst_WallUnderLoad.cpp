#include "monitor/MainWindowTest.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "video/ui/ItemVideo.h"

#include <QtTest>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

constexpr int Cameras = 64;

/// Groups of eight cameras c0 .. c63, or the same in the opposite order.
std::string list(bool turned) {
    std::string devices;
    std::string groups;
    for (int group = 0; group < Cameras / 8; ++group) {
        std::string members;
        for (int number = 0; number < 8; ++number) {
            const int place = group * 8 + number;
            const std::string id = "\"c" + std::to_string(turned ? Cameras - 1 - place : place) + "\"";
            devices += (devices.empty() ? "" : ",") + std::string("{\"ipncid\":") + id +
                       ",\"type\":\"video\",\"online\":true}";
            members += (members.empty() ? "" : ",") + id;
        }
        groups += (groups.empty() ? "" : ",") + std::string("{\"id\":\"") + std::to_string(group) +
                  "\",\"name\":\"g\",\"ipnclist\":[" + members + "]}";
    }
    return "{\"ipnclist\":[" + devices + "],\"group\":[" + groups + "]}";
}

/// Sends pictures and reports for all requests there have been, wanted or not, from threads of its own, until it
/// goes.
class Streams final {
public:
    explicit Streams(FakeSdk& sdk)
        : sdk_(sdk)
        , picture_(320 * 180 * 3 / 2, 90) {
        for (int number = 0; number < 4; ++number)
            threads_.emplace_back([this, number] { run(number); });
    }
    ~Streams() {
        stop_ = true;
        for (std::thread& thread : threads_)
            thread.join();
    }
    int sent() const { return sent_; }

private:
    void run(int number) {
        std::vector<FakeSdk::Request> requests;
        for (int round = 0; !stop_; ++round) {
            if (round % 10 == 0)
                requests = newest(number);
            for (const FakeSdk::Request& request : requests)
                send(request, round);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    /// The running requests of one thread, and as many that have ended.
    std::vector<FakeSdk::Request> newest(int number) {
        std::vector<FakeSdk::Request> mine;
        for (const FakeSdk::Request& request : sdk_.requests()) {
            if (request.id % 4 == number && request.json.find("avreq") != std::string::npos)
                mine.push_back(request);
        }
        const auto most = std::min<std::size_t>(mine.size(), 2 * Cameras / 4);
        return {mine.end() - static_cast<std::ptrdiff_t>(most), mine.end()};
    }
    void send(const FakeSdk::Request& request, int round) {
        const std::string id = "{\"reqid\":" + std::to_string(request.id);
        if (round % 8 == 0)
            request.callback(id + R"(,"type":"avopen","avparam":{"hd":false}})");
        // Sizes change all the time, and some make no sense.
        const int width = round % 3 == 0 ? 320 : 160;
        const int height = round % 31 == 0 ? 7 : width * 9 / 16;
        request.callback(id + R"(,"type":"decodevideodata","data":)" +
                         std::to_string(reinterpret_cast<std::intptr_t>(picture_.data())) +
                         ",\"w\":" + std::to_string(width) + ",\"h\":" + std::to_string(height) + "}");
        if ((round + request.id) % 97 == 0)
            request.callback(id + R"(,"type":"avclose","retcode":15})");
        ++sent_;
    }

    FakeSdk& sdk_;
    std::vector<uchar> picture_;
    std::atomic<bool> stop_{false};
    std::atomic<int> sent_{0};
    std::vector<std::thread> threads_;
};

} // namespace

/// 64 streams at once, while the operator does everything to the wall, to the very end of the window.
class tst_WallUnderLoad final : public MainWindowTest {
    Q_OBJECT
private slots:
    void everythingAtOnce();

private:
    const char* deviceList() const override {
        static const std::string inOrder = list(false);
        return inOrder.c_str();
    }
    void openAll();
    void step(int round);
    int painting() const;
};

void tst_WallUnderLoad::openAll() {
    for (int camera = 0; camera < Cameras; ++camera) {
        const QString id = QStringLiteral("c%1").arg(camera);
        const DeviceRecord* const device = manager_->context().devices.device(id);
        if (!window_->live().isOpen(id) && window_->grid().isIndexShown(device->tileIndex))
            window_->live().open(id);
    }
}

int tst_WallUnderLoad::painting() const {
    int count = 0;
    for (int index = 0; index < Cameras; ++index)
        count += tile(index).counters().painted > 0 ? 1 : 0;
    return count;
}

void tst_WallUnderLoad::step(int round) {
    Fwidget& grid = window_->grid();
    switch (round % 9) {
    case 0:
        grid.setLayout(8, 8, true);
        openAll();
        break;
    case 1:
        grid.setLayout(3, 6, false);
        break;
    case 2:
        grid.toggleZoom(round % Cameras);
        break;
    case 3:
        grid.toggleZoom(round % Cameras);
        grid.setLayout(8, 8, false);
        break;
    case 4:
        for (int index = round % 7; index < Cameras; index += 7)
            window_->live().stopTile(index);
        break;
    case 5:
        openAll();
        frame_->resize(700 + round * 3, 420 + round * 2);
        break;
    case 6:
        sendList(list(round % 2 == 0).c_str());
        break;
    case 7:
        frame_->hide();
        frame_->show();
        break;
    default:
        if (round % 4 == 0)
            window_->live().stopAll();
    }
}

void tst_WallUnderLoad::everythingAtOnce() {
    window_->grid().setLayout(8, 8, false);
    openAll();
    const Streams streams(sdk_);
    QTRY_COMPARE_WITH_TIMEOUT((openAll(), painting()), Cameras, 120000); // some end meanwhile
    for (int round = 0; round < 36; ++round) {
        step(round);
        const int before = streams.sent();
        QTRY_VERIFY_WITH_TIMEOUT(streams.sent() > before + 10, 60000);
    }
    // After all that the wall still works.
    window_->grid().setLayout(8, 8, false);
    QTRY_VERIFY_WITH_TIMEOUT((openAll(), tile(63).requestId() > 0 && tile(63).frameSize().width > 0), 60000);
    frame_.reset();
    const int before = streams.sent();
    QTRY_VERIFY_WITH_TIMEOUT(streams.sent() > before + 100, 60000); // still talking, to nobody
}

QTEST_MAIN(tst_WallUnderLoad)
#include "tst_WallUnderLoad.moc"
