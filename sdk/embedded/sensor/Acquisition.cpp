#include "sensor/Acquisition.h"

#include "base/Log.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr std::size_t usualWorkers = 2;
constexpr std::size_t mostWorkers = 64;
/// How long a line may be late before another thread is begun for it.
constexpr std::chrono::milliseconds mostDelay{30};

} // namespace

Acquisition::Acquisition(const Clock& clock, DriverTools tools, std::vector<ReadingSink*> sinks)
    : clock_(clock)
    , tools_(std::move(tools))
    , sinks_(std::move(sinks)) {
    for (std::size_t i = 0; i < usualWorkers; ++i)
        workers_.emplace_back([this] { work(); });
    time_ = std::thread([this] { watchTime(); });
}

Acquisition::~Acquisition() {
    stop();
}

void Acquisition::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    timeChanged_.notify_all();
    workCame_.notify_all();
    if (time_.joinable())
        time_.join();
    // Only the thread that has just ended begins workers.
    for (std::thread& worker : workers_) {
        if (worker.joinable())
            worker.join();
    }
}

std::string Acquisition::keyOf(const SensorBoard& board) {
    const std::string device = textOr(board.board.params, "device", "");
    const bool serial = !isPlant(board.board) && textOr(board.board.params, "mode", "") == "rtu" && !device.empty();
    return serial ? "line " + device : "board " + std::to_string(board.board.pid);
}

bool Acquisition::holds(const Line& line, const std::vector<const SensorBoard*>& boards) {
    return std::equal(line.boards.begin(), line.boards.end(), boards.begin(), boards.end(),
                      [](const auto& run, const SensorBoard* board) { return run->what() == *board; });
}

Acquisition::LinePointer Acquisition::makeLine(const std::vector<const SensorBoard*>& boards) const {
    auto line = std::make_shared<Line>();
    for (const SensorBoard* board : boards)
        line->boards.push_back(
            std::make_unique<BoardRun>(*board, makeDriver(board->ipncid, board->board, tools_), Steady::now()));
    return line;
}

void Acquisition::setBoards(const std::vector<SensorBoard>& boards) {
    std::map<std::string, std::vector<const SensorBoard*>> wanted;
    for (const SensorBoard& board : boards)
        wanted[keyOf(board)].push_back(&board);
    std::vector<LinePointer> ended;
    {
        const std::lock_guard lock(mutex_);
        for (auto line = lines_.begin(); line != lines_.end();) {
            const auto same = wanted.find(line->first);
            if (same != wanted.end() && holds(*line->second, same->second)) {
                wanted.erase(same);
                ++line;
                continue;
            }
            line->second->retired = true;
            ended.push_back(line->second);
            line = lines_.erase(line);
        }
        for (auto entry = waiting_.begin(); entry != waiting_.end();)
            entry = entry->second->retired ? waiting_.erase(entry) : std::next(entry);
    }
    std::map<std::string, LinePointer> made;
    std::map<int, BoardRun*> byPid;
    for (const auto& [key, list] : wanted) {
        made[key] = makeLine(list);
        for (const auto& board : made[key]->boards)
            byPid[board->what().board.pid] = board.get();
    }
    // A device has one connection at a time: the old one ends before the new one begins.
    for (const LinePointer& line : ended) {
        const std::lock_guard device(line->device);
        for (const auto& board : line->boards) {
            board->release();
            if (const auto next = byPid.find(board->what().board.pid); next != byPid.end())
                next->second->inherit(*board);
        }
    }
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [key, line] : made) {
            lines_[key] = line;
            schedule(line, Steady::now());
        }
        indexPorts();
    }
    timeChanged_.notify_all();
}

void Acquisition::schedule(const LinePointer& line, Steady::time_point due) {
    if (!line->retired && due != Steady::time_point::max())
        waiting_.emplace(due, line);
}

void Acquisition::indexPorts() {
    ports_.clear();
    for (const auto& [key, line] : lines_) {
        for (const auto& board : line->boards) {
            for (const Port& input : board->what().board.inputs)
                ports_[input.pid] = {line, board.get(), input, true};
            for (const Port& output : board->what().board.outputs)
                ports_[output.pid] = {line, board.get(), output, false};
        }
    }
}

std::optional<Acquisition::Place> Acquisition::placeOf(int pid) const {
    const std::lock_guard lock(mutex_);
    const auto found = ports_.find(pid);
    return found == ports_.end() || stopping_ ? std::nullopt : std::make_optional(found->second);
}

void Acquisition::handOut(const std::vector<Reading>& readings) {
    if (readings.empty())
        return;
    for (ReadingSink* sink : sinks_)
        sink->take(readings);
}

ServiceCode Acquisition::write(int pid, double value) {
    const auto place = placeOf(pid);
    if (!place || place->isInput)
        return ServiceCode::UnknownInput;
    if (!place->board->what().reachable)
        return ServiceCode::DeviceOffline;
    const std::lock_guard device(place->line->device);
    const std::string fault = place->board->write(place->port, value, Steady::now());
    if (place->line->boards.size() > 1)
        place->board->release();
    if (!fault.empty()) {
        logLine("the output " + std::to_string(pid) + " was not switched: " + fault);
        return ServiceCode::WriteFailed;
    }
    handOut({{pid, clock_.now(), value, true}});
    return ServiceCode::Done;
}

std::optional<Reading> Acquisition::readNow(int pid) {
    const auto place = placeOf(pid);
    if (!place || !place->isInput)
        return std::nullopt;
    const std::lock_guard device(place->line->device);
    const auto readings = place->board->readAll(Steady::now(), clock_.now());
    if (place->line->boards.size() > 1)
        place->board->release();
    handOut(readings);
    const auto found =
        std::find_if(readings.begin(), readings.end(), [pid](const Reading& reading) { return reading.pid == pid; });
    return found == readings.end() ? std::nullopt : std::make_optional(*found);
}

ServiceCode Acquisition::hand(int pid, double raw) {
    const auto place = placeOf(pid);
    if (!place || !place->isInput)
        return ServiceCode::UnknownInput;
    const std::lock_guard device(place->line->device);
    const auto reading = place->board->hand(pid, raw, clock_.now());
    if (!reading)
        return ServiceCode::UnknownInput;
    handOut({*reading});
    return ServiceCode::Done;
}

void Acquisition::watchTime() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const auto now = Steady::now();
        bool came = false;
        while (!waiting_.empty() && waiting_.begin()->first <= now) {
            ready_.push_back(waiting_.begin()->second);
            waiting_.erase(waiting_.begin());
            workCame_.notify_one(); // one for each line: woken in vain, the others would be in each other's way
            came = true;
        }
        // Lines that nobody has taken since the last look wait for devices that are slow.
        const bool late = !came && !ready_.empty() && resting_ == 0;
        if (late && workers_.size() < mostWorkers)
            workers_.emplace_back([this] { work(); });
        auto next = waiting_.empty() ? now + std::chrono::hours(1) : waiting_.begin()->first;
        if (!ready_.empty())
            next = std::min(next, now + mostDelay);
        timeChanged_.wait_until(lock, next);
    }
}

void Acquisition::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        ++resting_;
        workCame_.wait(lock, [this] { return stopping_ || !ready_.empty(); });
        --resting_;
        if (stopping_)
            return;
        const LinePointer line = std::move(ready_.front());
        ready_.pop_front();
        lock.unlock();
        try {
            serve(*line);
        } catch (const std::exception& error) {
            logLine(std::string("reading a board failed: ") + error.what());
        }
        auto due = Steady::time_point::max();
        for (const auto& board : line->boards)
            due = std::min(due, board->due());
        lock.lock();
        const bool first = waiting_.empty() || due < waiting_.begin()->first;
        schedule(line, due);
        if (first)
            timeChanged_.notify_all();
    }
}

void Acquisition::serve(Line& line) {
    const std::lock_guard device(line.device);
    for (const auto& board : line.boards) {
        {
            const std::lock_guard lock(mutex_);
            if (stopping_ || line.retired)
                return;
        }
        if (board->due() > Steady::now())
            continue;
        handOut(board->poll(Steady::now(), clock_.now()));
        if (line.boards.size() > 1)
            board->release();
    }
}

} // namespace ipncsdk::sensor
