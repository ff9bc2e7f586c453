#include "app/AppState.h"

#include "app/Settings.h"

#include <algorithm>

AppStateValues &AppState()
{
    static AppStateValues values;
    return values;
}

void ReadAppStateFromSettings()
{
    const QString system = QStringLiteral("System");
    AppStateValues &state = AppState();
    // Any value other than 0 means the package format.
    state.defaultAlbumFormat = SettingInteger(ReadSetting(system, QStringLiteral("DefaultAlbumFormat"))) != 0 ? 1 : 0;
    // Start-up writes "1" where the value is empty; readers that run without start-up do the same.
    const QString onOpenFolder = ReadSetting(system, QStringLiteral("CheckModifiedWhenOpenFolder"));
    state.checkModifiedWhenOpenFolder = onOpenFolder.isEmpty() || SettingNumber(onOpenFolder) != 0;
    state.checkModifiedWhenOpenAlbum = SettingNumber(ReadSetting(system, QStringLiteral("CheckModifiedWhenOpenAlbum"))) != 0;
    const int tab = SettingInteger(ReadSetting(QStringLiteral("Layout"), QStringLiteral("SelectedExtraTab")));
    state.selectedExtraTab = static_cast<std::int16_t>(std::clamp(tab, -32768, 32767));
}
