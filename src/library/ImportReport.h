#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// A file an operation could not do its work on (not imported, not sent to the trash), or did it
// with something missing, and why in words.
struct FileProblem {
    QString path;
    QString reason; // never empty
};

// What an import did, for the windows and the command line to show: the records it made, and
// every file it did not import with the reason. A photo that was placed in the album always gets
// its record, with what could be read; what could not be read is a warning.
struct ImportReport {
    QList<int> imported;              // the new records' indices, in the order they were made
    QStringList sources;              // the file each new record came from
    QList<FileProblem> notImported;
    QList<FileProblem> warnings;

    bool Clean() const { return notImported.isEmpty() && warnings.isEmpty(); }
    // One "path: reason" line for each file not imported, then for each warning.
    QStringList ProblemLines() const
    {
        QStringList lines;
        for (const QList<FileProblem> *problems : {&notImported, &warnings}) {
            for (const FileProblem &problem : *problems)
                lines << problem.path + QStringLiteral(": ") + problem.reason;
        }
        return lines;
    }
    void Add(const ImportReport &other)
    {
        imported += other.imported;
        sources += other.sources;
        notImported += other.notImported;
        warnings += other.warnings;
    }
};
