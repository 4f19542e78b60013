#pragma once

#include "platform/webview.h"

#include <QPointer>

class QWebEngineView;

// The web view on Qt WebEngine (Chromium).
class WebEngineView : public WebView
{
public:
    explicit WebEngineView(QWidget *parent);
    ~WebEngineView() override;

    QWidget *widget() override;
    void setEvents(Events events) override;
    void Navigate(const QUrl &url) override;
    void GoBack() override;
    void GoForward() override;
    void Refresh() override;
    void Stop() override;
    void setHtml(const QString &html, const QUrl &base) override;
    QUrl url() const override;
    QString title() const override;
    bool canGoBack() const override;
    bool canGoForward() const override;

private:
    QPointer<QWebEngineView> m_view;
    Events m_events;
};
