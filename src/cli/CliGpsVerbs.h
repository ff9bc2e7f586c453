#pragma once

class QString;
struct GpsArguments;
struct GpsAlbumVerb;

// The gps verbs that work on an album; nothing for any other name.
const GpsAlbumVerb *FindGpsAlbumVerb(const QString &name);
int RunGpsAlbumVerb(const GpsAlbumVerb &verb, const GpsArguments &args);
