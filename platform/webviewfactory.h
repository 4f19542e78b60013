#pragma once

#include "platform/webview.h"

#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

// Makes web views. The browser engine costs hundreds of megabytes and a
// noticeable start, so it is a module (libvelto_webengine.so) loaded the first
// time a view is asked for, never before. Velto built without the engine has
// no module, and create() gives nothing.
class WebViewFactory
{
public:
    // Searches the program's folder, then the build tree the program came from.
    WebViewFactory();
    // Tries exactly these module files, in order; an empty list means no engine.
    explicit WebViewFactory(QStringList moduleFiles);

    // Null when there is no engine.
    std::unique_ptr<WebView> create(QWidget *parent);
    // Loads the module if that has not been tried yet.
    bool hasEngine();

private:
    using Create = WebView *(*)(QWidget *parent);
    void load();

    QStringList m_files;
    bool m_tried = false;
    Create m_create = nullptr;
};
