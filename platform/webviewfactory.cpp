#include "webviewfactory.h"

#include "platform/moduleloader.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QtDebug>

// Qt's own, exported for the web engine, which looks for this context.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *context);
Q_GUI_EXPORT QOpenGLContext *qt_gl_global_share_context();
QT_END_NAMESPACE

// The build tree's module, for programs run from where they were built.
#ifndef VELTO_WEBENGINE_MODULE
#define VELTO_WEBENGINE_MODULE ""
#endif

WebViewFactory::WebViewFactory()
    : m_files(moduleFiles(QStringLiteral("libvelto_webengine.so"),
                          QStringLiteral(VELTO_WEBENGINE_MODULE)))
{
}

WebViewFactory::WebViewFactory(QStringList moduleFiles) : m_files(std::move(moduleFiles)) {}

namespace {

// The engine draws through an OpenGL context shared by every window. Qt makes
// it at start when asked to before the application exists, which loads the
// OpenGL driver (some 60 MiB and 30 ms) into every start for a mode most users
// never open. Made here, just before the engine is loaded and looks for it, it
// costs only those who browse. It lives as long as the process, as the engine
// may draw through it until the end. Without it the engine would crash.
bool shareOpenGLContexts()
{
    if (qt_gl_global_share_context())
        return true;
    auto *context = new QOpenGLContext;
    context->setFormat(QSurfaceFormat::defaultFormat());
    if (!context->create()) {
        delete context;
        return false;
    }
    qt_gl_set_global_share_context(context);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    return true;
}

} // namespace

void WebViewFactory::load()
{
    if (m_tried)
        return;
    m_tried = true;
    if (m_files.isEmpty())
        return;
    if (!shareOpenGLContexts()) {
        qWarning() << "The browser mode opens pages outside: no OpenGL to draw them with";
        return;
    }
    const LoadedModule module = loadModule(m_files, "velto_create_web_view");
    m_create = reinterpret_cast<Create>(module.entry);
    if (!m_create)
        qWarning().noquote() << "The browser mode opens pages outside:" << module.problem;
}

std::unique_ptr<WebView> WebViewFactory::create(QWidget *parent)
{
    load();
    return std::unique_ptr<WebView>(m_create ? m_create(parent) : nullptr);
}

bool WebViewFactory::hasEngine()
{
    load();
    return m_create != nullptr;
}
