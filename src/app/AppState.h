#pragma once

#include <cstdint>

// Process-wide values that start-up settles from the settings file and the rest of the program
// reads.
struct AppStateValues {
    int defaultAlbumFormat = 0;           // 0 folder album, 1 package album
    bool checkModifiedWhenOpenFolder = false;
    bool checkModifiedWhenOpenAlbum = false;
    std::int16_t selectedExtraTab = 0;
};

AppStateValues &AppState();

// Reads the values from the settings file, writing nothing.
void ReadAppStateFromSettings();
