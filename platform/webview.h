#pragma once

#include <QString>
#include <QUrl>

#include <functional>

class QWidget;

// An embedded web page: what the browser mode needs of a browser engine.
// Header-only on purpose: the engine lives in a module loaded at run time
// (libvelto_webengine.so), which must not carry a second copy of anything
// that lives in the executable.
class WebView
{
public:
    // Called on the thread that owns the view, from the event loop.
    struct Events
    {
        std::function<void(const QString &title)> titleChanged;
        std::function<void(const QUrl &url)> urlChanged;
        std::function<void()> loadStarted;
        std::function<void(int percent)> loadProgress;
        std::function<void(bool ok)> loadFinished;
        // The link under the pointer; empty when it left the link.
        std::function<void(const QUrl &url)> linkHovered;
        // A link meant for a new window, or an address the engine does not
        // show (mailto:, a download): it belongs in the user's own browser.
        std::function<void(const QUrl &url)> outsideLink;
    };

    virtual ~WebView() = default;

    // The page; the caller places it, and deletes it before the view.
    virtual QWidget *widget() = 0;
    virtual void setEvents(Events events) = 0;

    virtual void Navigate(const QUrl &url) = 0;
    virtual void GoBack() = 0;
    virtual void GoForward() = 0;
    virtual void Refresh() = 0;
    virtual void Stop() = 0;
    // Shows a page made of this HTML, for addresses below base.
    virtual void setHtml(const QString &html, const QUrl &base) = 0;

    virtual QUrl url() const = 0;
    virtual QString title() const = 0;
    virtual bool canGoBack() const = 0;
    virtual bool canGoForward() const = 0;
};
