#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The addresses the browser mode has visited, kept in "url-list.txt" in the
// program's folder: one address a line, oldest first, UTF-8.
namespace UrlList {

// The list keeps 100 addresses.
constexpr int kLimit = 100;
// Longer lines are no address anyone typed or picked; they are skipped.
constexpr int kMaxLine = 8192;
// A list file is read no further than this.
constexpr qint64 kMaxFileBytes = 4 * 1024 * 1024;

// "http://" put in front of an address whose first three characters are
// "WWW" in any case; any other address as it is.
QString withScheme(const QString &url);
// The address joins the list unless it is there already; when the list then
// holds more than 100, the entry at index 99 goes (so the newest stays).
// True when the list changed.
bool add(QStringList &list, const QString &url);

// The addresses of a list file's bytes: blank lines, over-long lines and
// entries past the limit are left out. Total: any bytes give a list.
QStringList parse(const QByteArray &bytes);
QByteArray format(const QStringList &list);

// The file by name: a missing, odd or unreadable file gives an empty list;
// only its first kMaxFileBytes are read.
QStringList load(const QString &file);
// Written whole or not at all; false when it could not be written.
bool save(const QString &file, const QStringList &list);

} // namespace UrlList
