#include "RecentDocs.h"

#include "Settings.h"

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
    for (int i = 0; i < count; ++i) {
        if (paths[static_cast<std::size_t>(i)] == path) {
            for (int j = i; j + 1 < count; ++j)
                paths[static_cast<std::size_t>(j)] = paths[static_cast<std::size_t>(j + 1)];
            --count;
            break;
        }
    }
    if (count == Capacity) {
        for (int j = 0; j + 1 < Capacity; ++j)
            paths[static_cast<std::size_t>(j)] = paths[static_cast<std::size_t>(j + 1)];
    } else {
        ++count;
    }
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
