#pragma once

#include "imaging/TagReader.h"

#include <QString>
#include <QStringView>
#include <span>

class ImageTags;

// How a tag's stored value becomes the text TagReader::Text gives.
enum class TagRendering {
    Readable,     // the library's own print form
    Stored,       // the value as stored, such as a reference letter "N"
    FlashWords,   // the flash value in the EXIF standard's words
    Sexagesimal,  // three rationals as "degrees:minutes:seconds"
    TextList,     // every entry of a repeatable tag, joined with ","
    Rational,     // one rational as a decimal number
};

// How a tag's text becomes the value of its photo record key.
enum class RecordRule {
    AsRead,       // the text as it is
    DateTaken,    // DateTakenText
    FlashState,   // FlashState
    Keywords,     // KeywordsText
    Degrees,      // SignedDegreesText with the row's reference tag
    Reference,    // the reference letter of a Degrees or Altitude row; not read on its own
    Altitude,     // metres, written from the record; the record does not read it back
    WrittenOnly,  // carries the record's value into the file; the record reads it elsewhere
};

// Whether an imported record takes the key when the photo does not hold the value.
enum class Presence { Always, WhenPresent };

// One tag of the photo files, the photo record key it belongs to and how it is read and
// written. Rows of one key are in the order of preference for reading (the first tag with a
// value wins) and in the order the writer writes them.
struct TagRow {
    const char *recordKey;            // "" for tags no record key takes
    QString ImageTags::*field;        // the ImageTags field of the key, or nullptr
    TagFamily family;
    const char *name;                 // the name TagReader::Text takes
    const char *exiv2Key;
    TagRendering rendering;
    RecordRule rule;
    Presence presence;
    const char *exifToolTag;          // what ExifTool writes the record's value into; nullptr: never written
};

// Every tag the program reads or writes, record keys in the order of a photo record.
std::span<const TagRow> TagTable();

// The row of a tag by the name TagReader::Text takes; nullptr when the program has no such tag.
const TagRow *FindTagRow(TagFamily family, QStringView name);

// The first row of a record key with the rule; nullptr when there is none.
const TagRow *FindTagRow(const char *recordKey, RecordRule rule);
