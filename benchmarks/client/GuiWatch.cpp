#include "client/GuiWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTextStream>

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace {

constexpr std::chrono::milliseconds Beat{10};
constexpr std::chrono::milliseconds Long{
    40}; ///< from here on it is asked where the GUI thread is, and again after as long
constexpr std::size_t MostBlocks = 40;
const int WhereSignal = SIGRTMIN + 4;
const auto BeatType = static_cast<QEvent::Type>(QEvent::registerEventType());

double cpuOf(pthread_t thread) {
    clockid_t clock{};
    timespec time{};
    if (pthread_getcpuclockid(thread, &clock) != 0 || clock_gettime(clock, &time) != 0)
        return 0;
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double milliseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// "MODULE+OFFSET=NAME", the name empty where the module does not tell it.
QString frameText(void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return QStringLiteral("?+0=");
    QString name;
    if (info.dli_sname != nullptr) {
        int status = 0;
        const std::unique_ptr<char, decltype(&std::free)> plain(
            abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), &std::free);
        name = QString::fromUtf8(plain ? plain.get() : info.dli_sname);
    }
    const auto offset = static_cast<char*>(address) - static_cast<char*>(info.dli_fbase);
    return QStringLiteral("%1+%2=%3").arg(QFile::decodeName(info.dli_fname), QString::number(offset, 16), name);
}

} // namespace

GuiWatch::Stack GuiWatch::asked_;
std::atomic<bool> GuiWatch::isFilled_{false};

GuiWatch::GuiWatch()
    : gui_(pthread_self()) {
    // The first call loads what unwinds, which no signal handler may do.
    asked_.count = backtrace(asked_.frames.data(), MostFrames);
    struct sigaction action {};
    action.sa_handler = &GuiWatch::onSignal;
    action.sa_flags = SA_RESTART;
    sigaction(WhereSignal, &action, nullptr);
    thread_ = std::thread([this] { run(); });
}

GuiWatch::~GuiWatch() {
    ends_ = true;
    thread_.join();
    signal(WhereSignal, SIG_IGN);
}

void GuiWatch::onSignal(int /*number*/) {
    const int error = errno;
    asked_.count = backtrace(asked_.frames.data(), MostFrames);
    isFilled_ = true;
    errno = error;
}

void GuiWatch::run() {
    while (!ends_) {
        std::this_thread::sleep_for(Beat);
        beat();
    }
}

void GuiWatch::beat() {
    // While this is held, the GUI thread waits with its answer, in which it takes signals still.
    const std::lock_guard lock(mutex_);
    if (!isPending_) {
        stacks_.clear();
        cpuBefore_ = cpuOf(gui_);
        sent_ = Clock::now();
        isPending_ = true;
        QCoreApplication::postEvent(this, new QEvent(BeatType), Qt::HighEventPriority);
    } else if (stacks_.size() < MostStacks && Clock::now() - sent_ > Long * static_cast<int>(stacks_.size() + 1)) {
        askWhere();
    }
}

void GuiWatch::askWhere() {
    isFilled_ = false;
    if (pthread_kill(gui_, WhereSignal) != 0)
        return;
    while (!isFilled_ && !ends_)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    stacks_.push_back(asked_);
}

bool GuiWatch::event(QEvent* event) {
    if (event->type() != BeatType)
        return QObject::event(event);
    const Clock::time_point now = Clock::now();
    const std::lock_guard lock(mutex_);
    const double latency = milliseconds(now - sent_);
    latencies_.push_back(static_cast<float>(latency));
    if (now - sent_ > Long) {
        blocks_.push_back({latency, cpuOf(gui_) - cpuBefore_, now, stacks_});
        std::sort(blocks_.begin(), blocks_.end(),
                  [](const Block& a, const Block& b) { return a.milliseconds > b.milliseconds; });
        if (blocks_.size() > MostBlocks)
            blocks_.pop_back();
    }
    isPending_ = false;
    return true;
}

void GuiWatch::clear() {
    latencies_.clear();
    blocks_.clear();
}

GuiWatch::Summary GuiWatch::summary() const {
    if (latencies_.empty())
        return {};
    std::vector<float> sorted = latencies_;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t last = sorted.size() - 1;
    return {sorted.size(), sorted[last / 2], sorted[last * 99 / 100], sorted[last]};
}

bool GuiWatch::write(const QString& path) const {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&file);
    for (const Block& block : blocks_) {
        out << "BLOCK " << block.milliseconds << ' ' << block.computed << ' '
            << milliseconds(Clock::now() - block.end) / 1e3 << '\n';
        for (const Stack& stack : block.stacks) {
            out << "STACK";
            for (int i = 0; i < stack.count; ++i)
                out << '\t' << frameText(stack.frames[static_cast<std::size_t>(i)]);
            out << '\n';
        }
    }
    return out.status() == QTextStream::Ok;
}
