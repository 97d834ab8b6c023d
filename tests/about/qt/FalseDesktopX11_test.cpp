// The false desktop on a real X server: a private Xvfb whose desktop is one plain colour,
// the game started on it as a player starts it, and the screen read back from the server.
// When the main window is mapped, its place still shows the desktop (the server's copy
// covers it, with the Loading window that stood there when the copy was made); a few
// seconds later the copy has fallen away and the game shows.
#include <xcb/xcb.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t DesktopColour = 0x3A6EA5;
using Clock = std::chrono::steady_clock;

// A child process that is ended (and waited for) when this goes.
struct Child {
    pid_t pid = -1;
    ~Child() {
        if (pid <= 0) return;
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
};

// Starts a private Xvfb and gives its display number, or nothing if it cannot start.
std::optional<int> StartXvfb(Child& server) {
    if (access("/usr/bin/Xvfb", X_OK) != 0) return std::nullopt;
    int pipeFds[2];
    if (pipe(pipeFds) != 0) return std::nullopt;
    server.pid = fork();
    if (server.pid == 0) {
        close(pipeFds[0]);
        const std::string fd = std::to_string(pipeFds[1]);
        if (const int devNull = open("/dev/null", O_WRONLY); devNull >= 0) dup2(devNull, STDERR_FILENO);
        execl("/usr/bin/Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
              static_cast<char*>(nullptr));
        _exit(127);
    }
    close(pipeFds[1]);
    std::string number;
    pollfd wait{pipeFds[0], POLLIN, 0};
    const auto deadline = Clock::now() + std::chrono::seconds(15);
    while (Clock::now() < deadline && number.find('\n') == std::string::npos) {
        if (poll(&wait, 1, 100) <= 0) continue;
        char buffer[16];
        const ssize_t n = read(pipeFds[0], buffer, sizeof buffer);
        if (n <= 0) break;
        number.append(buffer, static_cast<std::size_t>(n));
    }
    close(pipeFds[0]);
    if (number.find('\n') == std::string::npos) return std::nullopt;
    return std::atoi(number.c_str());
}

std::string Title(xcb_connection_t* x, xcb_window_t window) {
    xcb_get_property_reply_t* reply =
        xcb_get_property_reply(x, xcb_get_property(x, 0, window, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 256), nullptr);
    if (reply == nullptr) return {};
    std::string text(static_cast<const char*>(xcb_get_property_value(reply)),
                     static_cast<std::size_t>(xcb_get_property_value_length(reply)));
    std::free(reply);
    return text;
}

std::uint32_t PixelAt(xcb_connection_t* x, xcb_window_t root, int px, int py) {
    xcb_get_image_reply_t* image = xcb_get_image_reply(
        x, xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, root, static_cast<std::int16_t>(px), static_cast<std::int16_t>(py), 1, 1, ~0u),
        nullptr);
    if (image == nullptr) return 0xFFFFFFFFu;
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, xcb_get_image_data(image), std::min<int>(4, xcb_get_image_data_length(image)));
    std::free(image);
    return pixel & 0xFFFFFF;
}

} // namespace

TEST(FalseDesktopX11, TheServersCopyCoversTheWindowThenFallsAway) {
    Child server;
    const std::optional<int> display = StartXvfb(server);
    if (!display) GTEST_SKIP() << "no private Xvfb could start here (is /usr/bin/Xvfb installed?)";
    const std::string name = ":" + std::to_string(*display);
    xcb_connection_t* x = xcb_connect(name.c_str(), nullptr);
    ASSERT_EQ(xcb_connection_has_error(x), 0);
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const xcb_window_t root = screen->root;
    // A desktop of one colour, and the server's map events reported to us.
    const std::uint32_t rootValues[] = {DesktopColour, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_change_window_attributes(x, root, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, rootValues);
    xcb_clear_area(x, 0, root, 0, 0, 0, 0);
    std::free(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    ASSERT_EQ(PixelAt(x, root, 5, 5), DesktopColour);

    // The game folder as built, past its first start, silent.
    const fs::path folder = fs::temp_directory_path() / ("tolva2-x11-" + std::to_string(getpid()));
    fs::remove_all(folder);
    fs::copy(TOLVA_GAME_DIR, folder, fs::copy_options::recursive);
    std::ofstream(folder / "tolva2.ini", std::ios::binary) << "[main]\r\nnotfirstuse=yes\r\nplaymusic=0\r\nplaysounds=0\r\n";

    Child game;
    game.pid = fork();
    if (game.pid == 0) {
        setenv("DISPLAY", name.c_str(), 1);
        setenv("QT_QPA_PLATFORM", "xcb", 1);
        if (const int devNull = open("/dev/null", O_WRONLY); devNull >= 0) {
            dup2(devNull, STDOUT_FILENO);
            dup2(devNull, STDERR_FILENO);
        }
        const std::string program = (folder / "tolva2").string();
        execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }

    // Wait for the main window's map, and read the screen at once.
    xcb_window_t main = XCB_NONE;
    const auto deadline = Clock::now() + std::chrono::seconds(30);
    const int fd = xcb_get_file_descriptor(x);
    while (main == XCB_NONE && Clock::now() < deadline) {
        pollfd wait{fd, POLLIN, 0};
        poll(&wait, 1, 100);
        while (xcb_generic_event_t* event = xcb_poll_for_event(x)) {
            if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
                const auto* mapped = reinterpret_cast<xcb_map_notify_event_t*>(event);
                if (Title(x, mapped->window).rfind("TOLVA II  -", 0) == 0) main = mapped->window;
            }
            std::free(event);
        }
    }
    ASSERT_NE(main, XCB_NONE) << "the main window did not show within 30 s";
    xcb_get_geometry_reply_t* frame = xcb_get_geometry_reply(x, xcb_get_geometry(x, main), nullptr);
    ASSERT_NE(frame, nullptr);
    const int left = frame->x, top = frame->y, width = frame->width, height = frame->height;
    std::free(frame);
    ASSERT_EQ(width, 750);
    // Near the window's top left corner the copy shows the plain desktop; in its middle,
    // the Loading window the copy was made with.
    const int cornerX = left + 40, cornerY = top + 60;
    EXPECT_EQ(PixelAt(x, root, cornerX, cornerY), DesktopColour);
    EXPECT_NE(PixelAt(x, root, left + width / 2, top + height / 2), DesktopColour);

    // Two seconds later the copy starts to fall; the game comes into view from the top.
    bool uncovered = false;
    const auto fallDeadline = Clock::now() + std::chrono::seconds(15);
    while (!uncovered && Clock::now() < fallDeadline) {
        poll(nullptr, 0, 50);
        uncovered = PixelAt(x, root, cornerX, cornerY) != DesktopColour;
    }
    EXPECT_TRUE(uncovered) << "the false desktop did not fall away";

    xcb_disconnect(x);
    kill(game.pid, SIGKILL);
    waitpid(game.pid, nullptr, 0);
    game.pid = -1;
    fs::remove_all(folder);
}
