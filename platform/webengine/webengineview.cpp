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
    QObject::connect(page, &QWebEnginePage::titleChanged, m_view, [this](const QString &title) {
        if (m_events.titleChanged)
            m_events.titleChanged(title);
    });
    QObject::connect(page, &QWebEnginePage::urlChanged, m_view, [this](const QUrl &url) {
        if (m_events.urlChanged)
            m_events.urlChanged(url);
    });
    QObject::connect(page, &QWebEnginePage::loadStarted, m_view, [this] {
        if (m_events.loadStarted)
            m_events.loadStarted();
    });
    QObject::connect(page, &QWebEnginePage::loadProgress, m_view, [this](int percent) {
        if (m_events.loadProgress)
            m_events.loadProgress(percent);
    });
    QObject::connect(page, &QWebEnginePage::loadFinished, m_view, [this](bool ok) {
        if (m_events.loadFinished)
            m_events.loadFinished(ok);
    });
    QObject::connect(page, &QWebEnginePage::linkHovered, m_view, [this](const QString &url) {
        if (m_events.linkHovered)
            m_events.linkHovered(QUrl(url));
    });
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
