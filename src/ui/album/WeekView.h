#pragma once

#include "library/CalendarFlags.h"

#include <QDate>
#include <QDateTime>
#include <QWidget>

class DataList;

// OrvWeekView: one week as seven day columns of 24 hour cells, the hours in which the album's
// photos were taken drawn highlighted. A click on an hour picks it. The flags are computed in the
// library (ComputeWeekFlags); this view paints them.
class OrvWeekView : public QWidget {
    Q_OBJECT
public:
    explicit OrvWeekView(QWidget *parent = nullptr);

    // The week's first day; the week is that day and the six following.
    QDate GetWeek() const { return firstDay; }
    void SetWeek(const QDate &first);
    void SetDataList(const DataList *list) { records = list; }
    void UpdateHighlightFlags();
    const WeekFlags &Flags() const { return flags; }
    // Scrolls the hour into view, when the view sits in a scroll area.
    void ShowHour(int hour);
    QDateTime GetCurrentHour() const { return current; }
    void SetCurrentHour(const QDateTime &hour);
    QDateTime GetSelectedHour() const { return selected; }
    // Where the hour cell of that day (0 .. 6 from the first) is drawn.
    QRect HourRect(int dayOfWeek, int hour) const;

    QSize sizeHint() const override;

signals:
    void HourPicked(const QDateTime &hour);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void DrawBaseGrid(QPainter &painter) const;
    void DrawCell(QPainter &painter, int dayOfWeek, int hour) const;
    QDateTime HourAt(int dayOfWeek, int hour) const;

    QDate firstDay;
    WeekFlags flags;
    QDateTime current;
    QDateTime selected;
    const DataList *records = nullptr;
};
