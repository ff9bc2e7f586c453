#pragma once

#include <QDateTime>
#include <QWidget>
#include <functional>

class DataList;
class OrvMonthView;
class OrvWeekView;
class QLabel;
class QTimer;

// The side panel's two calendar pages, each a view in a scroll area under a bar that steps
// through years or weeks. The marks are recomputed shortly after the records change, once for a
// burst of changes (an album streaming in sends many).
class CalendarPages : public QObject {
    Q_OBJECT
public:
    explicit CalendarPages(QWidget *owner);

    QWidget *MonthPage() const { return monthPage; }
    QWidget *WeekPage() const { return weekPage; }
    OrvMonthView *Month() const { return month; }
    OrvWeekView *Week() const { return week; }

    void SetDataList(const DataList *list);
    // Brings both views up to date with the records, soon. A view out of sight is brought up to
    // date when it shows: a big album's marks are computed only for the calendar looked at.
    void RefreshCalendarHighlight();
    // The same at once, for the view in sight.
    void UpdateNow();

protected:
    // A page coming into sight (its tab chosen, the panel or the window shown) is brought up to
    // date.
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    // A marked day ("yyyy-mm-dd") or hour ("yyyy-mm-dd hh") was clicked.
    void Picked(const QDateTime &date, const QString &format);

private:
    QWidget *Page(QWidget *view, QLabel *&caption, const std::function<void(int)> &step);
    void ShowWeekOf(const QDate &day);
    void RefreshCaptions();

    OrvMonthView *month;
    OrvWeekView *week;
    QWidget *monthPage;
    QWidget *weekPage;
    QLabel *yearCaption = nullptr;
    QLabel *weekCaption = nullptr;
    QTimer *refresh;
    const DataList *records = nullptr;
    bool placed = false; // the views have been moved to the album's latest photos once
    bool monthStale = true;
    bool weekStale = true;
};
