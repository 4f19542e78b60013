#pragma once

#include <QString>

// The file at relativeName below folder, where every part of the name may
// differ from the disk in letter case: skins and lists come from systems that
// ignore case. "\" separates like "/"; a drive letter or a leading separator is
// dropped, so the name always stays below folder (".." still climbs). An exact
// match wins over a case-folded one. Returns the clean path of an existing
// file, or an empty text when there is none.
QString findFileNoCase(const QString &folder, const QString &relativeName);
