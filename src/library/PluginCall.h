#pragma once

#include "app/Result.h"
#include "library/ImportReport.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

class AlbumDocument;
class ProgressSink;

// What a plug-in is handed: key-value pairs in order, a key may come more than once. They reach
// the plug-in as a UTF-8 text file of "Key=Value" lines, the file's path its one argument; a
// line break inside a value becomes a space. An importer adds "ImportedFiles=PATH" lines, one
// absolute path each, to the same file.
using PluginValues = std::vector<std::pair<QString, QString>>;

struct PluginRun {
    Result result;             // a failure says why, for the user
    QStringList importedFiles; // only when every one named is a photo file that exists
};

// The values for a run on an album, in their order: "AppName", "AppPath", "AppVersion",
// "AppLanguage", "MainWindowHandle", "DocumentWindowHandle", "DocumentPath", "CurrentItemID"
// (the current photo's record index, 0 for none), "SelectedItems" (the selected record indices,
// from 1, joined by ","), then a "SelectedFiles" line for each selected photo's path. Reads the
// document: call it on the document's thread.
PluginValues PluginValuesFor(const AlbumDocument &document, int current, const QList<int> &selected, quint64 mainWindow,
                             quint64 documentWindow);

// Makes the plug-in's program executable, as installing it should have.
bool RegisterPlugin(const QString &pluginsFolder, const QString &name);

// Runs the plug-in's program with the values and reads back what it wrote. A program that is
// missing, cannot start even once registered, crashes, ends with an error, outlasts the time-out
// or leaves a file that is not "Key=Value" lines is a failure, and so is an "ImportedFiles" line
// naming anything but an existing photo file: nothing of its answer is then used. Cancel stops
// the program.
PluginRun RunPlugin(const QString &pluginsFolder, const QString &name, const PluginValues &values, ProgressSink &progress,
                    int timeoutSeconds = 600);

struct PluginOutcome {
    Result run;            // how the plug-in's run went
    ImportReport imported; // what an importer's files gave the album
};
// LaunchPlugin: runs the plug-in on the album (the values from PluginValuesFor) and, when it is an
// importer, brings the files it names into the album, as any import does (progress, Cancel).
// Touches the document only through progress.Apply.
PluginOutcome LaunchPlugin(AlbumDocument &document, const QString &pluginsFolder, const QString &name, const PluginValues &values,
                           ProgressSink &progress, int timeoutSeconds = 600);
