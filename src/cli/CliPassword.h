#pragma once

#include <QString>
#include <optional>

// The FTP password: the variable ORVANA_FTP_PASSWORD, else asked for on the terminal without
// echo; nothing when neither is there. Never from the command line, where others could read it.
std::optional<QString> FtpPassword(const QString &prompt);
