#pragma once

#include <QString>
#include <QStringList>

// The file at relativeName below folder, where every part of the name may
// differ from the disk in letter case: skins and lists come from systems that
// ignore case. "\" separates like "/"; a drive letter or a leading separator is
// dropped, so the name always stays below folder (".." still climbs). An exact
// match wins over a case-folded one. Returns the clean path of an existing
// file, or an empty text when there is none.
QString findFileNoCase(const QString &folder, const QString &relativeName);

// The first of names (plain file names) that is a file in folder, each tried
// exactly, then in any letter case, before the next. Returns the name as on
// disk after the folder and a "/" (bare when the folder is empty, meaning
// the working folder), or an empty text.
QString firstExistingNoCase(const QString &folder, const QStringList &names);
