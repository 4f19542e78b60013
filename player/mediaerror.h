#pragma once

#include <QString>

// The message box a device shows when it cannot open a file. Lines are
// joined by "\r", as every message of the program is.
QString mediaErrorMessage(int error, const QString &device, const QString &file,
                          const QString &errorText);
