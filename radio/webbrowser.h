#pragma once

#include "platform/webview.h"
#include "skin/skinpart.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>

class QMenu;
class QUrl;
class QWidget;
class SkinSurface;

// The web browser mode: a page in the skin's web area (C3), an address field
// (T1) and the addresses visited (list 7), with Home, Refresh, Back, Forward,
// Stop and Search. The engine loads when the mode is first entered; without
// one, addresses open in the user's own browser.
class WebBrowser : public QObject, public SkinPart
{
    Q_OBJECT
public:
    // The settings it reads, owned by the program.
    struct Options
    {
        const std::array<QString, 10> &URL; // quick links 0 to 9; 0 is the home page
    };
    struct Services
    {
        SkinSurface &skin;
        QString urlListFile;
        // The page; null when Velto has no web engine.
        std::function<std::unique_ptr<WebView>(QWidget *parent)> makeView;
        // Hands an address to the user's own browser.
        std::function<void(const QUrl &url)> openOutside;
        // The search page; "%1" stands for the words searched (none: the page).
        QString searchUrl;
    };

    static constexpr int kStatusLabel = 15;
    static constexpr int kTitleLabel = 20;
    static constexpr int kAddressField = 1;
    static constexpr int kAddressList = 7;
    static constexpr int kPageArea = 3;

    WebBrowser(Options options, Services services, QObject *parent = nullptr);
    ~WebBrowser() override;

    // SkinPart
    QStringList modes() const override;
    void DoIt(qint16 cmd) override;
    void started() override;
    void ending(bool interactive) override;
    void skinLoaded() override;
    void entered() override;
    void left() override;

    // Adds the address to the list ("http://" before one that begins with
    // "WWW") and shows its page.
    void SetURL(const QString &url);
    // Opens the address in the user's own browser.
    void WebLink(const QString &url);
    // 0 Home, 1 Refresh, 2 Back, 3 Forward, 4 Stop.
    void WebNav(int action);
    // The words in the address field, or the search page.
    void WebSearch();
    // Quick link n (0 to 9) of the settings, as an "http://" address.
    void QuickLink(int n);

    const QStringList &urlList() const { return m_urls; }
    bool inMode() const { return m_in; }
    // Null until the mode is entered with an engine.
    WebView *view() const { return m_view.get(); }

signals:
    // A browser command came while another mode is shown.
    void modeWanted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool needMode();
    void makeView();
    void placeView();
    void navigate(const QString &url);
    void showStatus(const QString &text);
    void showAddresses();
    void showStartPage();
    void popupAddresses();

    Options m_options;
    Services m_svc;
    QStringList m_urls;
    bool m_urlsChanged = false;
    bool m_in = false;
    bool m_triedView = false;
    std::unique_ptr<WebView> m_view;
    // The page's own window, for a browser skin without a web area.
    std::unique_ptr<QWidget> m_pageWindow;
    std::unique_ptr<QMenu> m_addressMenu;
    QPointer<QObject> m_field;
    QPointer<QObject> m_list;
    QString m_status;
};
