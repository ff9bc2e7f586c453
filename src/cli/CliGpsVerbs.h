#pragma once

struct GpsArguments;

// The gps verbs that work on an album, and those that write KML.
int RunGpsMatch(const GpsArguments &args);
int RunGpsMatchWaypoint(const GpsArguments &args);
int RunGpsShift(const GpsArguments &args);
int RunGpsCorrect(const GpsArguments &args);
int RunGpsKml(const GpsArguments &args);
int RunGpsKmz(const GpsArguments &args);
int RunGpsKmlTracks(const GpsArguments &args);
int RunGpsKmlWaypoints(const GpsArguments &args);
