#include "webviewfactory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QtDebug>

namespace {

const char moduleName[] = "libvelto_webengine.so";

} // namespace

WebViewFactory::WebViewFactory() : m_files(defaultModuleFiles()) {}

WebViewFactory::WebViewFactory(QStringList moduleFiles) : m_files(std::move(moduleFiles)) {}

QStringList WebViewFactory::defaultModuleFiles()
{
    QStringList files;
    const QString programDir = QCoreApplication::applicationDirPath();
    if (!programDir.isEmpty()) {
        files << QDir(programDir).filePath(QLatin1String(moduleName))
              << QDir(programDir)
                     .filePath(QStringLiteral("../lib/velto/") + QLatin1String(moduleName));
    }
#ifdef VELTO_WEBENGINE_MODULE
    files << QStringLiteral(VELTO_WEBENGINE_MODULE);
#endif
    return files;
}

void WebViewFactory::load()
{
    if (m_tried)
        return;
    m_tried = true;
    QStringList problems;
    for (const QString &file : std::as_const(m_files)) {
        if (!QFileInfo::exists(file))
            continue;
        // Views made from the module may outlive the factory: it stays loaded.
        QLibrary library(file);
        library.setLoadHints(QLibrary::PreventUnloadHint);
        if (!library.load()) {
            problems << library.errorString();
            continue;
        }
        m_create = reinterpret_cast<Create>(library.resolve("velto_create_web_view"));
        if (m_create)
            return;
        problems << QStringLiteral("%1 has no velto_create_web_view").arg(file);
    }
    if (problems.isEmpty())
        problems << QStringLiteral("Velto was built without the web engine");
    m_problem = problems.join(QStringLiteral("; "));
    if (!m_files.isEmpty())
        qWarning().noquote() << "The browser mode opens pages outside:" << m_problem;
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

QString WebViewFactory::problem()
{
    load();
    return m_problem;
}
