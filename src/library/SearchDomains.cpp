#include "library/SearchDomains.h"

#include "app/Paths.h"
#include "datalist/DataList.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString PathKey = QStringLiteral("PATH");
const QString CheckKey = QStringLiteral("CHECK");

QString Clean(const QString &path)
{
    return QDir::cleanPath(path);
}

qsizetype Find(const QList<SearchDomain> &domains, const QString &path)
{
    for (qsizetype i = 0; i < domains.size(); ++i) {
        if (Clean(domains[i].path) == Clean(path))
            return i;
    }
    return -1;
}

Result NotListed(const QString &path)
{
    return Result::Failure(QStringLiteral("not a search domain: ") + path);
}

} // namespace

QString SearchDomainsPath()
{
    return GetUserDataFolder() + QStringLiteral("/GlobalSearch.plist");
}

QList<SearchDomain> LoadSearchDomains()
{
    const QString file = SearchDomainsPath();
    if (!QFileInfo::exists(file)) {
        // Before the first start there is no library folder yet to search: nothing is written.
        if (GetLibraryPath().isEmpty())
            return {};
        const QList<SearchDomain> first{{GetLibraryPath(), true}};
        SaveSearchDomains(first);
        return first;
    }
    DataList list;
    list.Load(file);
    QList<SearchDomain> domains;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        const QString path = list.GetItemProperty(PathKey, i);
        if (!path.isEmpty())
            domains.append({path, list.GetItemProperty(CheckKey, i) == QLatin1String("1")});
    }
    return domains;
}

Result SaveSearchDomains(const QList<SearchDomain> &domains)
{
    DataList list;
    for (const SearchDomain &domain : domains) {
        list.AddItem(list.ItemCount() + 1);
        list.SetItemProperty(PathKey, domain.path, list.ItemCount());
        list.SetItemProperty(CheckKey, domain.checked ? QStringLiteral("1") : QStringLiteral("0"), list.ItemCount());
    }
    CreateFolderPath(GetUserDataFolder());
    QString error;
    return list.Save(SearchDomainsPath(), &error) ? Result::Success() : Result::Failure(error);
}

Result AddSearchDomain(const QString &path)
{
    QList<SearchDomain> domains = LoadSearchDomains();
    if (Find(domains, path) >= 0)
        return Result::Failure(QStringLiteral("already a search domain: ") + path);
    domains.append({Clean(path), true});
    return SaveSearchDomains(domains);
}

Result RemoveSearchDomain(const QString &path)
{
    QList<SearchDomain> domains = LoadSearchDomains();
    const qsizetype at = Find(domains, path);
    if (at < 0)
        return NotListed(path);
    domains.removeAt(at);
    return SaveSearchDomains(domains);
}

Result CheckSearchDomain(const QString &path, bool checked)
{
    QList<SearchDomain> domains = LoadSearchDomains();
    const qsizetype at = Find(domains, path);
    if (at < 0)
        return NotListed(path);
    domains[at].checked = checked;
    return SaveSearchDomains(domains);
}
