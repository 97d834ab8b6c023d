// The plug-in's two entry points, looked up by name by the game (WebBrowserLoader).
#include "hiscores/qt/WebBrowserPlugin.h"
#include "hiscores/qt/webbrowser/frmWebBrowser.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QtGlobal>

// QtGui's own setter of the context that all OpenGL contexts share (QtWebEngine's
// initialize() uses it the same way).
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);

namespace {

// The engine takes the shared OpenGL context for granted and crashes without one. An
// application normally makes it at start-up (Qt::AA_ShareOpenGLContexts), but that would
// load the OpenGL drivers at every start of the game for a window most games never open;
// so the plug-in makes it now, before the engine's first object. Where no OpenGL context
// can be created (the offscreen platform, a server without drivers) the context stays
// invalid and the engine draws in software.
void EnsureSharedOpenGLContext() {
    if (QOpenGLContext::globalShareContext() != nullptr) return;
    auto* context = new QOpenGLContext(QCoreApplication::instance());   // lives as long as the application
    context->create();
    qt_gl_set_global_share_context(context);
}

} // namespace

extern "C" Q_DECL_EXPORT int tolva2_WebBrowserVersion() { return tolva::WebBrowserPluginVersion; }

extern "C" Q_DECL_EXPORT void tolva2_ShowWebBrowser(const tolva::WebBrowserRequest* request) {
    if (request == nullptr) return;
    EnsureSharedOpenGLContext();
    tolva::frmWebBrowser window(*request);
    window.Form_Load();
    window.exec();
}
