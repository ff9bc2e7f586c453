#pragma once

#include <QString>

// The update check page: the page the packager names in Resources/Services.ini, with facts
// about this installation in its query. With no page named, no check is ever made.

// What the page is told, each value as it is sent (before percent-encoding).
struct UpdateFacts {
    QString language; // the interface language's own name
    QString machine;  // a random identifier kept in the settings: nothing of the machine or user
    QString timeZone; // "GMT+05.5"
    QString version;  // "2.0.0"
    QString albums;   // [System] OpenedAlbumsNumber
    QString system;   // a short name of the operating system and its version
};

// "GMT+" or "GMT-" and the offset from UTC in hours, formatted "00.0".
QString UpdateTimeZone(int offsetSeconds);
// The page's address and its query, keys in their fixed order, every value percent-encoded.
QString UpdatePageAddress(const QString &page, const UpdateFacts &facts);

// [Updates] Page of Services.ini; "" when the packager named none.
QString UpdatePage();
// The facts of this installation now; makes the machine identifier on first use.
UpdateFacts CurrentUpdateFacts();
// Notes today as the day of the last check ([System] LastCheckUpdate, a day number).
void RecordUpdateCheck();
