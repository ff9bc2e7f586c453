#pragma once

#include "cli/CliCommand.h"

#include <QString>
#include <vector>

// The manual pages and the shell completion are printed from the same group tables that parse
// the arguments and print --help, so none of them can describe a verb that is not there. The
// build runs these through hidden options of orvana-cli and installs what they print.
using CliGroupList = std::vector<const CliGroup *>;

// One-line description of orvana-cli, shared by its --help and its manual page.
extern const char *const CliDescription;

// roff source of the page "orvana-cli" or "orvana" (section 1); "" for any other name.
QString ManPage(const QString &page, const CliGroupList &groups);
// A bash script completing orvana-cli's groups, verbs and options.
QString BashCompletion(const CliGroupList &groups);
