#pragma once

#include <QString>

// The EXIF "Flash" value in the words of the EXIF standard's table, such as "Flash did not fire"
// or "Flash fired, auto mode, return light detected". Every value has a wording, also those the
// standard does not list: they are read bit by bit.
QString FlashWording(long value);
