#pragma once

#include <QString>
#include <array>
#include <cstdint>

// The recent-documents list: ten paths, slot 1 the oldest, kept in [RecentDocs] Doc1..Doc10.
class RecentDocList {
public:
    static constexpr int Capacity = 10;

    void Load();             // from the settings file; stops at the first empty DocN
    void Add(const QString &path);
    void Save() const;       // writes all ten keys, the unused ones empty
    void Clear() { count = 0; }

    int Count() const { return count; }
    // 1-based, like the keys.
    QString At(int slot) const { return paths.at(static_cast<std::size_t>(slot - 1)); }

private:
    std::array<QString, Capacity> paths;
    std::int16_t count = 0;
};

// The process-wide list that the main window loads, extends and saves.
RecentDocList &RecentDocs();
void LoadRecentDocs();
void AddRecentDoc(const QString &path);
void SaveRecentDocs();
