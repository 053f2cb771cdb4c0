// Starts a program and waits until its window is there and painted: window_watch WIDTH PROGRAM [ARGUMENT...]
//
// Prints "shown MILLISECONDS" from the start on, and ends the program. Its window is the first mapped one that is at
// least WIDTH wide. It is painted when its middle, and a place near each corner, differ from the black that the
// server puts there.

#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds patience{30};
constexpr int margin = 12; // px, from the edge to the looked-at places

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Held = std::unique_ptr<Reply, Free>;

/// Null when the window is gone.
Held<xcb_get_geometry_reply_t> geometry(xcb_connection_t* x, xcb_window_t window) {
    return Held<xcb_get_geometry_reply_t>(xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
}

bool isPainted(xcb_connection_t* x, xcb_window_t window, int column, int row) {
    const Held<xcb_get_image_reply_t> image(
        xcb_get_image_reply(x,
                            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(column),
                                          static_cast<std::int16_t>(row), 1, 1, ~0U),
                            nullptr));
    if (image == nullptr || xcb_get_image_data_length(image.get()) < 3)
        return false;
    const std::uint8_t* const pixel = xcb_get_image_data(image.get());
    return pixel[0] != 0 || pixel[1] != 0 || pixel[2] != 0;
}

bool isPainted(xcb_connection_t* x, xcb_window_t window) {
    const auto place = geometry(x, window);
    if (place == nullptr)
        return false;
    const int right = place->width - margin;
    const int bottom = place->height - margin;
    return isPainted(x, window, place->width / 2, place->height / 2) && isPainted(x, window, margin, margin) &&
           isPainted(x, window, right, margin) && isPainted(x, window, margin, bottom) &&
           isPainted(x, window, right, bottom);
}

/// Waits for the wide window; 0 when none comes.
xcb_window_t waitForWindow(xcb_connection_t* x, int width, Clock::time_point end) {
    while (Clock::now() < end && xcb_connection_has_error(x) == 0) {
        const Held<xcb_generic_event_t> event(xcb_poll_for_event(x));
        if (event == nullptr) {
            std::this_thread::sleep_for(std::chrono::microseconds(500));
            continue;
        }
        if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
            continue;
        const xcb_window_t window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
        const auto place = geometry(x, window);
        if (place != nullptr && place->width >= width)
            return window;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("window_watch WIDTH PROGRAM [ARGUMENT...]\n", stderr);
        return 2;
    }
    xcb_connection_t* const x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x) != 0) {
        std::fputs("window_watch: no display\n", stderr);
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(x);

    const auto start = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execv(argv[2], argv + 2);
        _exit(127);
    }
    const auto end = start + patience;
    const xcb_window_t window = waitForWindow(x, std::atoi(argv[1]), end);
    bool painted = false;
    while (window != 0 && !painted && Clock::now() < end) {
        painted = isPainted(x, window);
        if (!painted)
            std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    const std::chrono::duration<double, std::milli> took = Clock::now() - start;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    xcb_disconnect(x);
    if (!painted) {
        std::puts("failed no window");
        return 1;
    }
    std::printf("shown %.2f\n", took.count());
    return 0;
}
