#include "AppState.h"

AppStateValues &AppState()
{
    static AppStateValues values;
    return values;
}
