#include "radio/webbrowser.h"

#include "platform/webviewfactory.h"
#include "skin/skinlistarea.h"
#include "skin/skintextfield.h"

#include "support/loopbackserver.h"
#include "support/printers.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <array>

namespace {

// The browser part on a recorded skin with a web area; what it hands to the
// user's own browser is noted, never opened.
struct BrowserRig
{
    explicit BrowserRig(WebViewFactory &factory,
                        QString searchUrl = QStringLiteral("http://search.invalid/?q=%1"))
        : browser({URL},
                  {skin, home.file(QStringLiteral("url-list.txt")),
                   [&factory](QWidget *parent) { return factory.create(parent); },
                   [this](const QUrl &url) { outside << url.toString(); }, std::move(searchUrl)})
    {
        skin.description.areas << SkinArea{3, QRect(0, 0, 400, 300), {}};
    }

    QString status() const { return skin.labels.value(WebBrowser::kStatusLabel); }
    QString title() const { return skin.labels.value(WebBrowser::kTitleLabel); }
    QStringList addresses()
    {
        QStringList shown;
        SkinListArea *list = skin.list(WebBrowser::kAddressList);
        for (int i = 0; i < list->count(); ++i)
            shown << list->item(i)->text();
        return shown;
    }
    void type(const QString &text)
    {
        SkinTextField *field = skin.textField(WebBrowser::kAddressField);
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    TempHome home;
    RecordingSurface skin;
    std::array<QString, 10> URL;
    QStringList outside;
    WebBrowser browser;
};

WebViewFactory &noEngine()
{
    static WebViewFactory factory{QStringList()};
    return factory;
}

WebViewFactory &engine()
{
    static WebViewFactory factory;
    return factory;
}

} // namespace

TEST(WebBrowser, WithoutTheEngineAddressesOpenInTheUsersBrowser)
{
    BrowserRig rig(noEngine());
    rig.browser.skinLoaded();
    // From another mode a command asks for the browser first; typing in that
    // mode's text field is no address.
    QSignalSpy wanted(&rig.browser, &WebBrowser::modeWanted);
    rig.URL[4] = QStringLiteral("https://example.com/four");
    rig.browser.DoIt(114);
    EXPECT_EQ(wanted.count(), 1);
    rig.type(QStringLiteral("www.example.com"));
    EXPECT_EQ(rig.outside, QStringList({"https://example.com/four"}));

    rig.browser.entered();
    rig.browser.DoIt(102);
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_EQ(rig.status(), QStringLiteral("Velto was built without the web engine: pages open "
                                           "in your own browser."));
    EXPECT_EQ(rig.browser.view(), nullptr);
    rig.type(QStringLiteral("www.example.org"));
    rig.URL[0] = QStringLiteral("example.net/home");
    rig.browser.DoIt(101);
    rig.browser.DoIt(106);
    EXPECT_EQ(rig.outside, QStringList({"https://example.com/four", "http://www.example.org",
                                        "http://example.net/home", "http://search.invalid/?q="}));
    EXPECT_EQ(rig.addresses(), QStringList({"http://example.net/home", "http://www.example.org",
                                            "https://example.com/four"}))
        << "newest first; a search is no address visited";
}

TEST(WebBrowser, TheAddressListIsReadAtStartAndWrittenAtTheEnd)
{
    BrowserRig rig(noEngine());
    const QString file =
        rig.home.write(QStringLiteral("url-list.txt"), "http://one/\nhttp://two/\n\n");
    rig.browser.started();
    EXPECT_EQ(rig.addresses(), QStringList({"http://two/", "http://one/"}));
    rig.browser.entered();
    rig.browser.SetURL(QStringLiteral("http://two/"));
    rig.browser.SetURL(QStringLiteral("http://three/"));
    rig.browser.ending(true);
    EXPECT_EQ(readAll(file), QByteArray("http://one/\nhttp://two/\nhttp://three/\n"));
}

// The real engine, pages from a loopback server and from a file.
class WebEngine : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!engine().hasEngine())
            GTEST_SKIP() << "built without Qt WebEngine";
        ASSERT_TRUE(server.listening());
        server.page("/one", "<html><head><title>Page One</title></head></html>");
        server.page("/two", "<html><head><title>Page Two</title></head><body>2</body></html>");
        server.page("/search", "<html><head><title>Results</title></head></html>");
        server.page("/mail", "<html><head><title>Mail</title></head><body style=\"margin:0\">"
                             "<a href=\"mailto:someone@example.org\" style=\"position:fixed;"
                             "left:0;top:0;right:0;bottom:0\">mail</a></body></html>");
        rig = std::make_unique<BrowserRig>(engine(), server.url("/search?q=%1"));
        rig->browser.skinLoaded();
        rig->browser.entered();
        ASSERT_NE(rig->browser.view(), nullptr);
    }

    bool titled(const QString &title)
    {
        return QTest::qWaitFor([&] { return rig->title() == title; }, 30000);
    }

    LoopbackServer server;
    std::unique_ptr<BrowserRig> rig;
};

TEST_F(WebEngine, PagesAndFilesShowInTheWebAreaAndHistoryGoesBothWays)
{
    rig->type(server.url("/one"));
    ASSERT_TRUE(titled("Page One")) << rig->status().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return rig->status() == QStringLiteral("Done"); }));
    rig->browser.SetURL(server.url("/two"));
    ASSERT_TRUE(titled("Page Two"));
    EXPECT_EQ(rig->skin.textField(1)->text(), server.url("/two"));

    rig->browser.DoIt(103);
    EXPECT_TRUE(titled("Page One")) << "Back";
    EXPECT_EQ(rig->browser.urlList(), QStringList({server.url("/one"), server.url("/two")}));
    EXPECT_TRUE(rig->outside.isEmpty());

    const QString file = rig->home.write(QStringLiteral("page.html"),
                                         "<html><head><title>From a file</title></head></html>");
    rig->browser.SetURL(QUrl::fromLocalFile(file).toString());
    ASSERT_TRUE(titled("From a file"));
    rig->browser.DoIt(101); // no home page: the addresses visited
    EXPECT_TRUE(titled("Velto"));
}

TEST_F(WebEngine, SearchTakesTheWordsTypedAndOutsideLinksLeave)
{
    rig->skin.textField(1)->setText(QStringLiteral("velto skins"));
    rig->browser.DoIt(106);
    ASSERT_TRUE(titled("Results"));
    EXPECT_EQ(server.asked("/search?q=velto%20skins"), 1);

    // A click on another program's link: it is for the desktop.
    rig->browser.SetURL(server.url("/mail"));
    ASSERT_TRUE(titled("Mail"));
    QWidget *page = rig->browser.view()->widget();
    page->resize(400, 300);
    QWidget *input = page->focusProxy() ? page->focusProxy() : page;
    QTest::mouseClick(input, Qt::LeftButton, {}, input->rect().center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rig->outside.isEmpty(); }, 30000));
    EXPECT_EQ(rig->outside, QStringList({"mailto:someone@example.org"}));
    EXPECT_EQ(rig->title(), QStringLiteral("Mail")) << "the page stays";
}
