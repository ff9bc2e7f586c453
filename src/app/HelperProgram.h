#pragma once

#include <QString>

// An external program the application runs (ExifTool, GPSBabel): the one shipped in the
// Resources folder when it is there, else the one on the PATH. A program found in neither place
// is named bare, so that starting it fails with the runner's usual message.
QString HelperProgram(const QString &name);
