#include "cli/CliAlbumVerbs.h"
#include "cli/CliOutput.h"

#include "library/CalendarFlags.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// One line per marked cell, or a JSON array of them: "month row weekday" or "weekday slot".
void Print(const QList<QList<int>> &cells, const QStringList &names, bool json)
{
    QJsonArray array;
    for (const QList<int> &cell : cells) {
        QStringList line;
        QJsonObject object;
        for (qsizetype i = 0; i < cell.size(); ++i) {
            line << QString::number(cell[i]);
            object.insert(names[i], cell[i]);
        }
        if (json)
            array.append(object);
        else
            PrintOut(line.join(u' '));
    }
    if (json)
        PrintOut(QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented)).trimmed());
}

} // namespace

int AlbumCalendar(const CliArguments &args, AlbumDocument &album)
{
    const QString view = args.positional.value(1);
    const QString when = args.positional.value(2);
    QList<QList<int>> cells;
    if (args.positional.size() == 3 && view == QLatin1String("month")) {
        bool number = false;
        const int year = when.toInt(&number);
        if (!number)
            return args.UsageError(QStringLiteral("album calendar month takes a YEAR"));
        const MonthFlags flags = ComputeMonthFlags(album.List(), year);
        for (int month = 1; month <= 12; ++month)
            for (int row = 1; row <= 6; ++row)
                for (int weekday = 1; weekday <= 7; ++weekday)
                    if (flags.At(month, row, weekday))
                        cells.append({month, row, weekday});
        Print(cells, {QStringLiteral("month"), QStringLiteral("row"), QStringLiteral("weekday")}, args.Has("--json"));
        return ExitDone;
    }
    const QDate first = QDate::fromString(when, QStringLiteral("yyyy-MM-dd"));
    if (args.positional.size() != 3 || view != QLatin1String("week") || !first.isValid())
        return args.UsageError(QStringLiteral("album calendar takes ALBUM and month YEAR or week FIRSTDAY (yyyy-mm-dd)"));
    const WeekFlags flags = ComputeWeekFlags(album.List(), first);
    for (int weekday = 1; weekday <= 7; ++weekday)
        for (int slot = 1; slot <= 24; ++slot)
            if (flags.At(weekday, slot))
                cells.append({weekday, slot});
    Print(cells, {QStringLiteral("weekday"), QStringLiteral("slot")}, args.Has("--json"));
    return ExitDone;
}
