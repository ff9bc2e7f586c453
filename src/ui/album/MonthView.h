#pragma once

#include "library/CalendarFlags.h"

#include <QDate>
#include <QWidget>

class DataList;

// OrvMonthView: a year of twelve month grids, the days on which the album's photos were taken
// drawn highlighted. A click on a day picks it. The flags are computed in the library
// (ComputeMonthFlags); this view paints them.
class OrvMonthView : public QWidget {
    Q_OBJECT
public:
    explicit OrvMonthView(QWidget *parent = nullptr);

    int GetYear() const { return year; }
    void SetYear(int shown);
    // The list stays the document's; the view reads it only in UpdateHighlightFlags.
    void SetDataList(const DataList *list) { records = list; }
    void UpdateHighlightFlags();
    const MonthFlags &Flags() const { return flags; }
    // Scrolls the month into view, when the view sits in a scroll area.
    void ShowMonth(int month);
    QDate GetCurrentDay() const { return current; }
    void SetCurrentDay(const QDate &day);
    QDate GetSelectedDay() const { return selected; }
    static QString GetMonthName(int month);
    // Where a day is drawn, for whoever needs to point at it.
    QRect DayRect(const QDate &day) const;

    QSize sizeHint() const override;

signals:
    void DayPicked(const QDate &day);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void DrawBaseGrid(QPainter &painter, int month) const;
    void DrawCell(QPainter &painter, const QDate &day) const;
    QRect MonthRect(int month) const;
    QDate DayAt(const QPoint &point) const;

    int year;
    MonthFlags flags;
    QDate current;
    QDate selected;
    const DataList *records = nullptr;
};
