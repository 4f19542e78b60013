#include "webviewfactory.h"

#include "platform/moduleloader.h"

#include <QtDebug>

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

void WebViewFactory::load()
{
    if (m_tried)
        return;
    m_tried = true;
    if (m_files.isEmpty())
        return;
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
