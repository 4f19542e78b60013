#include "webbrowser.h"

#include "urllist.h"

#include "skin/skinareawidget.h"
#include "skin/skindescription.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"
#include "skin/skintextfield.h"

#include <QEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QUrl>
#include <QVBoxLayout>
#include <QtDebug>

namespace {

bool hasArea(const SkinDescription &skin, int number)
{
    return std::any_of(skin.areas.begin(), skin.areas.end(),
                       [number](const SkinArea &a) { return a.number == number; });
}

// Words, not an address: a search for them is meant.
bool looksLikeWords(const QString &text)
{
    return text.contains(QLatin1Char(' ')) ||
           (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char(':')));
}

} // namespace

WebBrowser::WebBrowser(Options options, Services services, QObject *parent)
    : QObject(parent), m_options(options), m_svc(std::move(services))
{
}

WebBrowser::~WebBrowser() = default;

QStringList WebBrowser::modes() const
{
    return {QStringLiteral("BROWSER")};
}

void WebBrowser::DoIt(qint16 cmd)
{
    if (cmd >= 101 && cmd <= 105)
        return WebNav(cmd - 101);
    if (cmd == 106)
        return WebSearch();
    if (cmd >= 110 && cmd <= 119)
        return QuickLink(cmd - 110);
}

void WebBrowser::started()
{
    m_urls = UrlList::load(m_svc.urlListFile);
    showAddresses();
}

void WebBrowser::ending(bool)
{
    if (m_urlsChanged && !UrlList::save(m_svc.urlListFile, m_urls))
        qWarning().noquote() << "velto: the visited addresses could not be written to"
                             << m_svc.urlListFile;
    m_urlsChanged = false;
}

void WebBrowser::skinLoaded()
{
    // The address field and list are the skin's; they take what is typed
    // and picked only while the browser is shown.
    if (SkinTextField *field = m_svc.skin.textField(kAddressField); field && field != m_field) {
        m_field = field;
        connect(field, &SkinTextField::returnPressed, this, [this, field] {
            if (m_in)
                SetURL(field->text().trimmed());
        });
    }
    if (SkinListArea *list = m_svc.skin.list(kAddressList); list && list != m_list) {
        m_list = list;
        list->viewport()->installEventFilter(this);
        list->installEventFilter(this);
    }
    showAddresses();
    if (m_in)
        placeView();
}

void WebBrowser::entered()
{
    m_in = true;
    makeView();
    placeView();
}

void WebBrowser::left()
{
    m_in = false;
    if (m_pageWindow)
        m_pageWindow->hide();
}

void WebBrowser::makeView()
{
    if (m_triedView)
        return;
    m_triedView = true;
    m_view = m_svc.makeView ? m_svc.makeView(nullptr) : nullptr;
    if (!m_view) {
        showStatus(QStringLiteral("Velto was built without the web engine: "
                                  "pages open in your own browser."));
        return;
    }
    WebView::Events events;
    events.titleChanged = [this](const QString &title) { m_svc.skin.setLabel(kTitleLabel, title); };
    events.urlChanged = [this](const QUrl &url) {
        SkinTextField *field = m_svc.skin.textField(kAddressField);
        if (field && !field->hasFocus() && url.scheme() != QLatin1String("data"))
            field->setText(url.toString());
    };
    events.loadStarted = [this] { showStatus(QStringLiteral("Loading...")); };
    events.loadProgress = [this](int percent) {
        showStatus(QStringLiteral("Loading %1%").arg(percent));
    };
    events.loadFinished = [this](bool ok) {
        showStatus(ok ? QStringLiteral("Done") : QStringLiteral("This page could not be loaded."));
    };
    events.linkHovered = [this](const QUrl &url) {
        // The status comes back once the pointer leaves the link.
        m_svc.skin.setLabel(kStatusLabel, url.isEmpty() ? m_status : url.toString());
    };
    events.outsideLink = [this](const QUrl &url) {
        if (m_svc.openOutside)
            m_svc.openOutside(url);
    };
    m_view->setEvents(std::move(events));
    showStartPage();
}

void WebBrowser::placeView()
{
    if (!m_view)
        return;
    QWidget *page = m_view->widget();
    if (hasArea(m_svc.skin.skin(), kPageArea)) {
        if (m_pageWindow)
            m_pageWindow->hide();
        m_svc.skin.area(kPageArea)->setContent(page);
        return;
    }
    // A browser skin without a web area: the page gets a window of its own.
    if (!m_pageWindow) {
        m_pageWindow = std::make_unique<QWidget>();
        m_pageWindow->setWindowTitle(QStringLiteral("Velto Web Browser"));
        m_pageWindow->resize(800, 600);
        new QVBoxLayout(m_pageWindow.get());
        m_pageWindow->layout()->setContentsMargins(0, 0, 0, 0);
    }
    if (SkinAreaWidget *area = m_svc.skin.area(kPageArea); area && area->content() == page)
        area->setContent(nullptr);
    page->setParent(m_pageWindow.get());
    m_pageWindow->layout()->addWidget(page);
    page->show();
    m_pageWindow->show();
}

bool WebBrowser::needMode()
{
    if (!m_in)
        emit modeWanted();
    return m_in;
}

void WebBrowser::SetURL(const QString &url)
{
    if (url.trimmed().isEmpty())
        return;
    const QString address = UrlList::withScheme(url);
    if (UrlList::add(m_urls, address)) {
        m_urlsChanged = true;
        showAddresses();
    }
    navigate(address);
}

void WebBrowser::navigate(const QString &url)
{
    needMode();
    if (!m_view)
        return WebLink(url);
    m_view->Navigate(QUrl::fromUserInput(url));
}

void WebBrowser::WebLink(const QString &url)
{
    const QUrl address = QUrl::fromUserInput(url);
    if (!address.isValid() || !m_svc.openOutside)
        return;
    m_svc.openOutside(address);
    if (!m_view)
        showStatus(QStringLiteral("Opened in your browser: ") + address.toDisplayString());
}

void WebBrowser::WebNav(int action)
{
    if (action == 0) {
        if (!m_options.URL[0].trimmed().isEmpty())
            return QuickLink(0);
        needMode();
        return showStartPage();
    }
    if (!needMode() || !m_view)
        return;
    switch (action) {
    case 1:
        return m_view->Refresh();
    case 2:
        return m_view->GoBack();
    case 3:
        return m_view->GoForward();
    case 4:
        m_view->Stop();
        return showStatus(QStringLiteral("Stopped"));
    default:
        return;
    }
}

void WebBrowser::WebSearch()
{
    QString words;
    if (SkinTextField *field = m_svc.skin.textField(kAddressField); field && m_in) {
        words = field->text().trimmed();
        if (m_view && words == m_view->url().toString())
            words.clear();
    }
    if (!looksLikeWords(words))
        words.clear();
    navigate(m_svc.searchUrl.arg(QString::fromUtf8(QUrl::toPercentEncoding(words))));
}

void WebBrowser::QuickLink(int n)
{
    if (n < 0 || n >= int(m_options.URL.size()))
        return;
    QString url = m_options.URL[size_t(n)].trimmed();
    if (url.isEmpty())
        return;
    if (!url.contains(QLatin1String("://")))
        url.prepend(QStringLiteral("http://"));
    SetURL(url);
}

void WebBrowser::showStatus(const QString &text)
{
    m_status = text;
    m_svc.skin.setLabel(kStatusLabel, text);
}

void WebBrowser::showAddresses()
{
    SkinListArea *list = m_svc.skin.list(kAddressList);
    if (!list)
        return;
    // The newest on top.
    QStringList newestFirst(m_urls.rbegin(), m_urls.rend());
    list->clear();
    list->addItems(newestFirst);
    if (list->count() > 0)
        list->setCurrentRow(0);
}

// Without a home page (quick link 0), Home shows the addresses visited.
void WebBrowser::showStartPage()
{
    if (!m_view)
        return;
    QString links;
    for (auto it = m_urls.crbegin(); it != m_urls.crend(); ++it) {
        const QString href = QUrl::fromUserInput(*it).toString(QUrl::FullyEncoded);
        links += QStringLiteral("<li><a href=\"%1\">%2</a></li>\n")
                     .arg(href.toHtmlEscaped(), it->toHtmlEscaped());
    }
    if (links.isEmpty())
        links = QStringLiteral("<li>None yet: type an address above.</li>");
    m_view->setHtml(QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\">"
                                   "<title>Velto</title></head><body style=\"font-family: "
                                   "sans-serif\"><h2>Addresses visited</h2><ul>%1</ul>"
                                   "</body></html>")
                        .arg(links),
                    QUrl());
}

void WebBrowser::popupAddresses()
{
    auto *list = qobject_cast<SkinListArea *>(m_list.data());
    if (!list || m_urls.isEmpty())
        return;
    if (!m_addressMenu)
        m_addressMenu = std::make_unique<QMenu>();
    m_addressMenu->clear();
    for (auto it = m_urls.crbegin(); it != m_urls.crend(); ++it) {
        const QString url = *it;
        // "&" would mark a key in the menu.
        QString caption = url;
        caption.replace(QLatin1Char('&'), QStringLiteral("&&"));
        m_addressMenu->addAction(caption, this, [this, url] { SetURL(url); });
    }
    m_addressMenu->popup(list->mapToGlobal(QPoint(0, list->height())));
}

bool WebBrowser::eventFilter(QObject *watched, QEvent *event)
{
    auto *list = qobject_cast<SkinListArea *>(m_list.data());
    if (!m_in || !list || (watched != list && watched != list->viewport()))
        return false;
    // The list is one line high on the skin: a press drops the whole list down.
    if (event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        popupAddresses();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (QListWidgetItem *item = list->currentItem())
                SetURL(item->text());
            return true;
        }
    }
    return false;
}
