#include "api/SensorService.h"

#include "api/DeviceStream.h"
#include "api/HubPictures.h"
#include "base/Log.h"
#include "service/BoardRecords.h"

#include <chrono>
#include <utility>

namespace ipncsdk::api {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds beat{250};
constexpr int beatsOfUpdate = 2; ///< what changed is told twice a second
constexpr int beatsOfLook = 4;   ///< the lock, and boards that others changed
constexpr milliseconds orderPatience{12000};
constexpr milliseconds orderPause{50};

std::filesystem::path beside(const std::filesystem::path& store, const char* ending) {
    std::filesystem::path file = store;
    file += ending;
    return file;
}

} // namespace

SensorService::SensorService(Parts parts)
    : parts_(std::move(parts))
    , samples_(beside(parts_.storeFile, ".samples"))
    , lock_(beside(parts_.storeFile, ".sensors"))
    , snapshot_(std::make_shared<Snapshot>()) {}

SensorService::~SensorService() {
    stop();
}

std::string SensorService::start() {
    std::string notice;
    if (!sensor::SampleFile::prepare(samples_, parts_.clock, notice))
        return "传感器数据文件无法使用, 不能采集数据。";
    thread_ = std::thread([this] { keep(); });
    return notice;
}

void SensorService::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    appliedAll_.notify_all();
    if (thread_.joinable())
        thread_.join();
}

void SensorService::boardsChanged() {
    {
        const std::lock_guard lock(mutex_);
        ++changes_;
    }
    wake_.notify_all();
}

void SensorService::keep() {
    std::unique_ptr<sensor::SampleFile> file;
    std::uint64_t told = 0; // of changes_
    for (int count = 0; !stopping_; ++count) {
        const bool look = count % beatsOfLook == 0;
        bool reload = look;
        {
            std::unique_lock lock(mutex_);
            wake_.wait_for(lock, count == 0 ? milliseconds(0) : beat,
                           [this, told] { return stopping_ || changes_ != told; });
            told = changes_;
            reload = reload || told != applied_;
        }
        if (stopping_)
            break;
        try {
            if (!file) {
                file = std::make_unique<sensor::SampleFile>(samples_);
                readLatest(*file);
            }
            if (reload && loadBoards() && lock_.isHeld())
                applyBoards();
            if (look)
                lookForLock();
            if (reload) {
                const std::lock_guard lock(mutex_);
                applied_ = told;
                appliedAll_.notify_all();
            }
            if (file->changedByOthers()) {
                if (lock_.isHeld())
                    serveOrders(*file);
                else
                    readLatest(*file);
            }
        } catch (const std::exception& error) {
            logLine(std::string("looking after the sensors failed: ") + error.what());
            file.reset();
        }
        if (count % beatsOfUpdate == 0) {
            if (auto changed = parts_.latest.takeChanged(); !changed.empty())
                parts_.changed(std::move(changed));
        }
    }
    end();
}

void SensorService::lookForLock() {
    if (!lock_.isHeld() && lock_.tryTake())
        begin();
}

void SensorService::begin() {
    auto writer = std::make_shared<sensor::SampleWriter>(samples_, parts_.clock, parts_.retention);
    std::vector<sensor::ReadingSink*> sinks = {&parts_.latest, writer.get()};
    sinks.insert(sinks.end(), sinks_.begin(), sinks_.end());
    sensor::DriverTools tools;
    tools.now = [this] {
        return parts_.clock.now();
    };
    tools.valueOf = [this](const std::string& ipncid, int pid) {
        return valueFor(ipncid, pid);
    };
    tools.pictures = [this](const std::string& ipncid) {
        return picturesOf(ipncid);
    };
    // Who is in the middle of speaking to a board keeps both, however this ends.
    auto acquisition = std::shared_ptr<sensor::Acquisition>(
        new sensor::Acquisition(parts_.clock, std::move(tools), std::move(sinks)),
        [writer](sensor::Acquisition* ended) { delete ended; });
    {
        const std::lock_guard lock(mutex_);
        writer_ = std::move(writer);
        acquisition_ = std::move(acquisition);
    }
    parts_.acquires();
    applyBoards();
}

void SensorService::end() {
    std::shared_ptr<sensor::Acquisition> acquisition;
    {
        const std::lock_guard lock(mutex_);
        acquisition = std::exchange(acquisition_, nullptr);
    }
    if (acquisition)
        acquisition->stop();
    acquisition.reset();
    // Whoever waits for it to write keeps it until then.
    const std::lock_guard lock(mutex_);
    writer_.reset();
    lock_.release();
}

bool SensorService::loadBoards() {
    std::vector<store::DeviceBoards> devices;
    const ServiceCode code = parts_.database.read("read the boards", [&](soci::session& sql) {
        devices = store::allBoards(sql);
        return ServiceCode::Done;
    });
    std::vector<bool> reachable;
    reachable.reserve(devices.size());
    for (const store::DeviceBoards& device : devices)
        reachable.push_back(device.online && (device.origin != "loop" || parts_.cameras.isReachable(device.ipncid)));
    if (code != ServiceCode::Done || (devices == seen_ && reachable == seenReachable_))
        return false;
    auto snapshot = std::make_shared<Snapshot>();
    for (std::size_t i = 0; i < devices.size(); ++i) {
        const store::DeviceBoards& device = devices[i];
        snapshot->owners[device.ipncid] = device.owner;
        for (const Json& record : service::BoardRecords(device.interfaces, device.extend).all()) {
            sensor::Board board = sensor::boardOf(service::opened(record, parts_.key));
            for (const sensor::Port& input : board.inputs) {
                snapshot->usable[input.pid] = device.owner;
                snapshot->ports.insert(input.pid);
                if (!input.upload)
                    snapshot->unkept.insert(input.pid);
            }
            for (const sensor::Port& output : board.outputs) {
                snapshot->usable[output.pid] = device.owner;
                snapshot->ports.insert(output.pid);
                snapshot->unkept.insert(output.pid);
            }
            snapshot->boards.push_back({device.ipncid, std::move(board), reachable[i]});
        }
    }
    seen_ = std::move(devices);
    seenReachable_ = std::move(reachable);
    const std::lock_guard lock(mutex_);
    snapshot_ = std::move(snapshot);
    return true;
}

void SensorService::applyBoards() {
    std::shared_ptr<const Snapshot> snapshot;
    {
        const std::lock_guard lock(mutex_);
        snapshot = snapshot_;
    }
    // Both pointers are only changed by this thread.
    writer_->setUnkept(snapshot->unkept);
    acquisition_->setBoards(snapshot->boards);
    writer_->keepOnly(snapshot->ports);
}

void SensorService::readLatest(sensor::SampleFile& file) {
    std::vector<sensor::Reading> readings;
    sensor::SampleFile::Statement rows(file, "select pid, time, value, state from latest");
    while (rows.step())
        readings.push_back({static_cast<int>(rows.whole(0)), sensor::fromMilliseconds(rows.whole(1)), rows.real(2),
                            rows.whole(3) != 0});
    parts_.latest.take(readings);
}

void SensorService::serveOrders(sensor::SampleFile& file) {
    sensor::OrderBook(file).serve(sensor::toMilliseconds(std::chrono::system_clock::now()),
                                  [this](const sensor::OrderBook::Order& order) { return carryOut(order); });
}

ServiceCode SensorService::carryOut(const sensor::OrderBook::Order& order) {
    switch (order.kind) {
    case sensor::OrderBook::Kind::Write:
        return acquisition_->write(order.pid, order.value);
    case sensor::OrderBook::Kind::Hand:
        return acquisition_->hand(order.pid, order.value);
    case sensor::OrderBook::Kind::Read:
        if (!acquisition_->readNow(order.pid))
            return ServiceCode::UnknownInput;
        writer_->flush();
        return ServiceCode::Done;
    }
    return ServiceCode::NotSupported;
}

ServiceCode SensorService::order(const sensor::OrderBook::Order& order) {
    try {
        sensor::SampleFile file(samples_);
        sensor::OrderBook book(file);
        // The machine's own time: the other process runs on it, too.
        const auto number = book.place(order, sensor::toMilliseconds(std::chrono::system_clock::now()));
        const auto giveUp = std::chrono::steady_clock::now() + orderPatience;
        auto outcome = book.outcome(number);
        while (!outcome && !stopping_ && std::chrono::steady_clock::now() < giveUp) {
            std::this_thread::sleep_for(orderPause);
            outcome = book.outcome(number);
        }
        book.remove(number);
        return outcome.value_or(ServiceCode::WriteFailed);
    } catch (const sensor::SampleError& error) {
        logLine(std::string("nobody could be asked to speak to a board: ") + error.what());
        return ServiceCode::StoreError;
    }
}

std::shared_ptr<sensor::Acquisition> SensorService::acquisition() {
    std::unique_lock lock(mutex_);
    appliedAll_.wait_for(lock, orderPatience, [this] { return stopping_ || applied_ == changes_; });
    return acquisition_;
}

ServiceCode SensorService::write(int pid, double value) {
    if (const auto reading = acquisition())
        return reading->write(pid, value);
    return order({sensor::OrderBook::Kind::Write, pid, value});
}

std::optional<sensor::Reading> SensorService::readNow(int pid) {
    if (const auto reading = acquisition())
        return reading->readNow(pid);
    if (order({sensor::OrderBook::Kind::Read, pid, 0}) != ServiceCode::Done)
        return std::nullopt;
    sensor::SampleFile file(samples_);
    readLatest(file);
    return parts_.latest.of(pid);
}

ServiceCode SensorService::hand(int pid, double raw) {
    if (const auto reading = acquisition())
        return reading->hand(pid, raw);
    return order({sensor::OrderBook::Kind::Hand, pid, raw});
}

void SensorService::flush() {
    std::shared_ptr<sensor::SampleWriter> writer;
    {
        const std::lock_guard lock(mutex_);
        writer = writer_;
    }
    if (writer)
        writer->flush();
}

std::optional<double> SensorService::valueFor(const std::string& ipncid, int pid) const {
    std::shared_ptr<const Snapshot> snapshot;
    {
        const std::lock_guard lock(mutex_);
        snapshot = snapshot_;
    }
    // A device that has changed hands still names the inputs of its owner before.
    const auto owner = snapshot->owners.find(ipncid);
    const auto port = snapshot->usable.find(pid);
    if (owner == snapshot->owners.end() || port == snapshot->usable.end() || owner->second != port->second)
        return std::nullopt;
    const auto reading = parts_.latest.of(pid);
    return reading && reading->normal ? std::make_optional(reading->value) : std::nullopt;
}

std::unique_ptr<sensor::PictureSource> SensorService::picturesOf(const std::string& ipncid) {
    auto stream = lightStreamOf(parts_.database, parts_.cameras, parts_.key, parts_.root, ipncid);
    if (!stream || stopping_)
        return nullptr;
    return std::make_unique<HubPictures>(parts_.hub, std::move(*stream), stopping_);
}

} // namespace ipncsdk::api
