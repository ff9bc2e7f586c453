#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

// Directory listings (the server's answer to LIST) reduced to names. Servers answer in their own
// styles; these are understood:
//   Unix "ls -l": "drwxr-xr-x 2 owner group 4096 Mar  7 09:15 name with blanks", with a year in
//     place of the time, numeric or missing owners, "major, minor" sizes of device files, ISO dates
//     ("2024-03-07 09:15") and symbolic links, whose name is the part before " -> ".
//   MS-DOS/IIS: "03-07-24  09:15AM  <DIR>  name" and "03-07-24  09:15AM  1234 name".
//   EPLF: "+i8388621.29609,m824255902,/,\tname".
// Folders count as names: a listing is what a remote folder holds, and callers that look at the
// server's folders need them. "." and "..", "total N" headers, blank lines and lines of no known
// style name nothing.

// The name one listing line stands for, or "" when it names nothing.
QString NameFromListingLine(QStringView line);

// The names of a whole listing in listing order, its lines ended by CR LF, LF or CR. A listing that
// names nothing gives one element, "".
QStringList NamesFromListing(const QString &listing);
