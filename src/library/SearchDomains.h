#pragma once

#include "app/Result.h"

#include <QList>
#include <QString>

// The folders the global search looks through: "GlobalSearch.plist" in the user data folder, one
// item per domain with "PATH" (a folder) and "CHECK" ("1" when it takes part in searches).
struct SearchDomain {
    QString path;
    bool checked = true;
};

QString SearchDomainsPath();
// The domains in their order. A missing file is first made with one domain, the library folder,
// checked: a fresh installation searches its own albums.
QList<SearchDomain> LoadSearchDomains();
Result SaveSearchDomains(const QList<SearchDomain> &domains);

// Each change is written at once. Adding a folder already listed, or removing or checking one
// that is not, fails saying so.
Result AddSearchDomain(const QString &path);
Result RemoveSearchDomain(const QString &path);
Result CheckSearchDomain(const QString &path, bool checked);
