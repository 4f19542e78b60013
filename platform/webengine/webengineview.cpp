#include "webengineview.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEngineNavigationRequest>
#include <QWebEngineNewWindowRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <QtDebug>

#include <unistd.h>

namespace {

// What the page shows itself; anything else (mailto:, irc:, ...) is for
// the programs of the desktop.
bool shownInPage(const QUrl &url)
{
    static const QStringList schemes = {"http", "https", "file", "about", "data", "blob", "qrc"};
    return schemes.contains(url.scheme().toLower());
}

} // namespace

WebEngineView::WebEngineView(QWidget *parent) : m_view(new QWebEngineView(parent))
{
    QWebEnginePage *page = m_view->page();
    // Each signal of the page reaches the callback of the same name, when set.
    const auto forward = [this, page](auto signal, auto callback) {
        QObject::connect(page, signal, m_view, [this, callback](const auto &...args) {
            if (m_events.*callback)
                (m_events.*callback)(args...);
        });
    };
    forward(&QWebEnginePage::titleChanged, &Events::titleChanged);
    forward(&QWebEnginePage::urlChanged, &Events::urlChanged);
    forward(&QWebEnginePage::loadStarted, &Events::loadStarted);
    forward(&QWebEnginePage::loadProgress, &Events::loadProgress);
    forward(&QWebEnginePage::loadFinished, &Events::loadFinished);
    forward(&QWebEnginePage::linkHovered, &Events::linkHovered); // a QString, read as a QUrl
    // Pop-ups and links with a target of their own open in the user's browser.
    QObject::connect(page, &QWebEnginePage::newWindowRequested, m_view,
                     [this](QWebEngineNewWindowRequest &request) {
                         if (m_events.outsideLink && request.requestedUrl().isValid())
                             m_events.outsideLink(request.requestedUrl());
                     });
    QObject::connect(page, &QWebEnginePage::navigationRequested, m_view,
                     [this](QWebEngineNavigationRequest &request) {
                         if (shownInPage(request.url()))
                             return;
                         request.reject();
                         if (m_events.outsideLink)
                             m_events.outsideLink(request.url());
                     });
    QObject::connect(page->profile(), &QWebEngineProfile::downloadRequested, m_view,
                     [this](QWebEngineDownloadRequest *download) {
                         download->cancel();
                         if (m_events.outsideLink)
                             m_events.outsideLink(download->url());
                     });
}

WebEngineView::~WebEngineView()
{
    delete m_view;
}

QWidget *WebEngineView::widget()
{
    return m_view;
}

void WebEngineView::setEvents(Events events)
{
    m_events = std::move(events);
}

void WebEngineView::Navigate(const QUrl &url)
{
    m_view->load(url);
}

void WebEngineView::GoBack()
{
    m_view->back();
}

void WebEngineView::GoForward()
{
    m_view->forward();
}

void WebEngineView::Refresh()
{
    m_view->reload();
}

void WebEngineView::Stop()
{
    m_view->stop();
}

void WebEngineView::setHtml(const QString &html, const QUrl &base)
{
    m_view->setHtml(html, base);
}

QUrl WebEngineView::url() const
{
    return m_view->url();
}

QString WebEngineView::title() const
{
    return m_view->title();
}

bool WebEngineView::canGoBack() const
{
    return m_view->history()->canGoBack();
}

bool WebEngineView::canGoForward() const
{
    return m_view->history()->canGoForward();
}

extern "C" Q_DECL_EXPORT WebView *velto_create_web_view(QWidget *parent)
{
    // Chromium's sandbox refuses to run as root; a root session is the user's
    // own choice, so the page runs without it rather than not at all.
    if (::geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX")) {
        qWarning("velto: running as root, the web engine runs without its sandbox");
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }
    return new WebEngineView(parent);
}
