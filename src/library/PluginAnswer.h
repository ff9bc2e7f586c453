#pragma once

#include "library/PluginCall.h"

// A plug-in's answer file: "Key=Value" lines, keys made of letters, digits and "_". Its
// "ImportedFiles" lines are used only when every one names an existing photo file by an absolute
// path; otherwise none is, and the result says why. Any other bytes are refused, never guessed at.
PluginRun ReadPluginAnswer(const QByteArray &answer, bool allowNonJpeg);
