// tolva2-startup-probe PREFIX PROGRAM [ARGS...]: starts PROGRAM and prints, on one line,
// the milliseconds from its launch until the X server maps a top-level window whose
// title begins with PREFIX, then the program's process id. It listens to the server's
// own map events on the root window, set up before the launch, so the figure has no
// polling in it. The program is left running (the caller reads its memory and ends it).
// Exit status 1 if no such window maps within 30 seconds or the program ends first.
#include <xcb/xcb.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::string Title(xcb_connection_t* x, xcb_window_t window, xcb_atom_t netWmName, xcb_atom_t utf8) {
    for (const auto& [property, type] : {std::pair{netWmName, utf8}, std::pair<xcb_atom_t, xcb_atom_t>{XCB_ATOM_WM_NAME, XCB_ATOM_STRING}}) {
        xcb_get_property_reply_t* reply =
            xcb_get_property_reply(x, xcb_get_property(x, 0, window, property, type, 0, 256), nullptr);
        if (reply == nullptr) continue;
        std::string text(static_cast<const char*>(xcb_get_property_value(reply)),
                         static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        std::free(reply);
        if (!text.empty()) return text;
    }
    return {};
}

xcb_atom_t Atom(xcb_connection_t* x, const char* name) {
    xcb_intern_atom_reply_t* reply =
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr);
    const xcb_atom_t atom = reply != nullptr ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    std::free(reply);
    return atom;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: tolva2-startup-probe PREFIX PROGRAM [ARGS...]\n");
        return 2;
    }
    const std::string prefix = argv[1];
    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x)) {
        std::fprintf(stderr, "tolva2-startup-probe: no X display\n");
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &mask);
    const xcb_atom_t netWmName = Atom(x, "_NET_WM_NAME");
    const xcb_atom_t utf8 = Atom(x, "UTF8_STRING");
    xcb_flush(x);

    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        // The program's output is not the probe's: a caller reading the probe's line must
        // not wait for the program to close it.
        if (const int devNull = open("/dev/null", O_WRONLY); devNull >= 0) {
            dup2(devNull, STDOUT_FILENO);
            dup2(devNull, STDERR_FILENO);
            close(devNull);
        }
        execv(argv[2], argv + 2);
        std::perror("tolva2-startup-probe: exec");
        _exit(127);
    }
    const int fd = xcb_get_file_descriptor(x);
    while (std::chrono::steady_clock::now() - start < std::chrono::seconds(30)) {
        while (xcb_generic_event_t* event = xcb_poll_for_event(x)) {
            const bool mapped = (event->response_type & 0x7f) == XCB_MAP_NOTIFY;
            const xcb_window_t window = mapped ? reinterpret_cast<xcb_map_notify_event_t*>(event)->window : 0;
            std::free(event);
            if (mapped && Title(x, window, netWmName, utf8).rfind(prefix, 0) == 0) {
                const auto ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start);
                std::printf("%.1f %d\n", ms.count(), static_cast<int>(child));
                return 0;
            }
        }
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) break;
        pollfd p{fd, POLLIN, 0};
        poll(&p, 1, 100);
    }
    kill(child, SIGTERM);
    std::fprintf(stderr, "tolva2-startup-probe: no window \"%s...\" was mapped\n", prefix.c_str());
    return 1;
}
