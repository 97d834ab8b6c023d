#include "support/platform/qt/X11Display.h"

#include <QGuiApplication>
#include <QWidget>

#if defined(TOLVA_HAVE_XCB)
#include <xcb/xcb.h>
#endif

namespace tolva::x11 {

#if defined(TOLVA_HAVE_XCB)
namespace {

xcb_connection_t* Connection() {
    auto* app = qGuiApp;
    if (app == nullptr) return nullptr;
    auto* x11 = app->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

} // namespace

void Flush() {
    if (xcb_connection_t* connection = Connection()) xcb_flush(connection);
}

namespace {

// The picture made ahead by PrepareScreenCopy, black all over, and its size.
xcb_pixmap_t prepared = 0;
QSize preparedSize;

// A pixmap of the root window's depth, black all over: black stays where the copy
// reaches past the screen's edge, which the copy leaves as it was.
xcb_pixmap_t MakeBlackPixmap(xcb_connection_t* connection, const xcb_screen_t* screen, const QSize& size) {
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const auto width = static_cast<std::uint16_t>(size.width());
    const auto height = static_cast<std::uint16_t>(size.height());
    xcb_create_pixmap(connection, screen->root_depth, pixmap, screen->root, width, height);
    const xcb_gcontext_t gc = xcb_generate_id(connection);
    const std::uint32_t values[] = {screen->black_pixel};
    xcb_create_gc(connection, gc, pixmap, XCB_GC_FOREGROUND, values);
    const xcb_rectangle_t whole{0, 0, width, height};
    xcb_poly_fill_rectangle(connection, pixmap, gc, 1, &whole);
    xcb_free_gc(connection, gc);
    return pixmap;
}

const xcb_screen_t* FirstScreen(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

bool Fits(const QSize& size) { return !size.isEmpty() && size.width() <= 0xFFFF && size.height() <= 0xFFFF; }

} // namespace

void PrepareScreenCopy(const QSize& size) {
    xcb_connection_t* connection = Connection();
    if (connection == nullptr || !Fits(size)) return;
    const xcb_screen_t* screen = FirstScreen(connection);
    if (screen == nullptr) return;
    if (prepared != 0) xcb_free_pixmap(connection, prepared);
    prepared = MakeBlackPixmap(connection, screen, size);
    preparedSize = size;
    xcb_flush(connection);
}

bool ShowScreenCopyAsBackground(QWidget& window, const QRect& area) {
    xcb_connection_t* connection = Connection();
    if (connection == nullptr || !Fits(area.size())) return false;
    const xcb_screen_t* screen = FirstScreen(connection);
    if (screen == nullptr) return false;
    const auto target = static_cast<xcb_window_t>(window.winId());
    // The window's background is a pixmap holding the copy, made inside the server, which
    // the server paints wherever the window is exposed and moves along with the window.
    xcb_pixmap_t copy = 0;
    if (prepared != 0 && preparedSize == area.size()) {
        copy = prepared;
    } else {
        if (prepared != 0) xcb_free_pixmap(connection, prepared);
        copy = MakeBlackPixmap(connection, screen, area.size());
    }
    prepared = 0;
    const xcb_gcontext_t gc = xcb_generate_id(connection);
    const std::uint32_t values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    xcb_create_gc(connection, gc, copy, XCB_GC_SUBWINDOW_MODE, values);
    xcb_copy_area(connection, screen->root, copy, gc, static_cast<std::int16_t>(area.x()),
                  static_cast<std::int16_t>(area.y()), 0, 0, static_cast<std::uint16_t>(area.width()),
                  static_cast<std::uint16_t>(area.height()));
    xcb_free_gc(connection, gc);
    // Unchecked: waiting for the server's answer would cost the round trip this is
    // here to save. Qt makes the window with the root's visual, so the depths agree.
    const std::uint32_t background[] = {copy};
    xcb_change_window_attributes(connection, target, XCB_CW_BACK_PIXMAP, background);
    // The window holds the pixmap now; it goes with the window.
    xcb_free_pixmap(connection, copy);
    xcb_clear_area(connection, 0, target, 0, 0, 0, 0);
    return true;
}

#else

void Flush() {}

void PrepareScreenCopy(const QSize&) {}

bool ShowScreenCopyAsBackground(QWidget&, const QRect&) { return false; }

#endif

} // namespace tolva::x11
