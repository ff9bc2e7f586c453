#include "app/RecentDocs.h"

#include "app/Settings.h"

#include <algorithm>
#include <span>

namespace {

QString SlotKey(int slot)
{
    return QStringLiteral("Doc%1").arg(slot);
}

const QString Section = QStringLiteral("RecentDocs");

} // namespace

void RecentDocList::Load()
{
    count = Capacity;
    for (int slot = 1; slot <= Capacity; ++slot) {
        const QString path = ReadSetting(Section, SlotKey(slot));
        if (path.isEmpty()) {
            count = static_cast<std::int16_t>(slot - 1);
            return;
        }
        paths[static_cast<std::size_t>(slot - 1)] = path;
    }
}

void RecentDocList::Add(const QString &path)
{
    auto used = std::span(paths).first(static_cast<std::size_t>(count));
    if (const auto found = std::find(used.begin(), used.end(), path); found != used.end()) {
        std::rotate(found, found + 1, used.end());
        --count;
    }
    if (count == Capacity)
        std::rotate(paths.begin(), paths.begin() + 1, paths.end()); // the oldest falls out
    else
        ++count;
    paths[static_cast<std::size_t>(count - 1)] = path;
}

void RecentDocList::Save() const
{
    for (int slot = 1; slot <= Capacity; ++slot)
        WriteSetting(Section, SlotKey(slot), slot > count ? QString() : At(slot));
}

RecentDocList &RecentDocs()
{
    static RecentDocList list;
    return list;
}

void LoadRecentDocs()
{
    RecentDocs().Load();
}

void AddRecentDoc(const QString &path)
{
    RecentDocs().Add(path);
}

void SaveRecentDocs()
{
    RecentDocs().Save();
}
