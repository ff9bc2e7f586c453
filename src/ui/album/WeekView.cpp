#include "ui/album/WeekView.h"

#include "ui/album/CalendarStyle.h"

#include "app/Language.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>

namespace {

constexpr int LabelWidth = 40;
constexpr int CellWidth = 24;
constexpr int CellHeight = 16;
constexpr int HeaderHeight = 34;

} // namespace

OrvWeekView::OrvWeekView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("OrvWeekView"));
    const QDate today = QDate::currentDate();
    firstDay = today.addDays(-(WeekdayFromSunday(today) - 1));
    setMinimumSize(sizeHint());
}

QSize OrvWeekView::sizeHint() const
{
    return {LabelWidth + 7 * CellWidth + 2, HeaderHeight + 24 * CellHeight + 2};
}

void OrvWeekView::SetWeek(const QDate &first)
{
    firstDay = first;
    update();
}

void OrvWeekView::UpdateHighlightFlags()
{
    flags = records ? ComputeWeekFlags(*records, firstDay) : WeekFlags();
    update();
}

void OrvWeekView::ShowHour(int hour)
{
    if (auto *area = parentWidget() ? qobject_cast<QScrollArea *>(parentWidget()->parentWidget()) : nullptr)
        area->ensureVisible(LabelWidth, HourRect(0, hour).center().y(), 0, CellHeight);
}

void OrvWeekView::SetCurrentHour(const QDateTime &hour)
{
    current = hour;
    update();
}

QRect OrvWeekView::HourRect(int dayOfWeek, int hour) const
{
    return {LabelWidth + dayOfWeek * CellWidth, HeaderHeight + hour * CellHeight, CellWidth, CellHeight};
}

QDateTime OrvWeekView::HourAt(int dayOfWeek, int hour) const
{
    return QDateTime(firstDay.addDays(dayOfWeek), QTime(hour, 0), Qt::UTC);
}

void OrvWeekView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    DrawBaseGrid(painter);
    for (int day = 0; day < 7; ++day)
        for (int hour = 0; hour < 24; ++hour)
            DrawCell(painter, day, hour);
}

void OrvWeekView::DrawBaseGrid(QPainter &painter) const
{
    painter.setPen(palette().color(QPalette::Text));
    painter.setFont(CalendarFont("FontNameTitle", 9, true));
    painter.drawText(QRect(0, 0, LabelWidth, HeaderHeight), Qt::AlignCenter, CalendarText(QStringLiteral("Week")));
    painter.setFont(CalendarFont("FontNameLabel", 7));
    for (int day = 0; day < 7; ++day) {
        const QDate date = firstDay.addDays(day);
        const QRect header(LabelWidth + day * CellWidth, 0, CellWidth, HeaderHeight);
        painter.drawText(header, Qt::AlignCenter,
                         CalendarText(QStringLiteral("WeekdayShort%1").arg(WeekdayFromSunday(date))).left(2) + u'\n' + QString::number(date.day()));
    }
    painter.setPen(palette().color(QPalette::PlaceholderText));
    for (int hour = 0; hour < 24; ++hour)
        painter.drawText(QRect(0, HeaderHeight + hour * CellHeight, LabelWidth - 4, CellHeight), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(hour) + QStringLiteral(":00"));
}

void OrvWeekView::DrawCell(QPainter &painter, int dayOfWeek, int hour) const
{
    const QRect cell = HourRect(dayOfWeek, hour).adjusted(1, 1, -1, -1);
    const QDateTime at = HourAt(dayOfWeek, hour);
    if (flags.At(WeekdayFromSunday(at.date()), hour + 1))
        painter.fillRect(cell, palette().highlight());
    else
        painter.fillRect(cell, palette().alternateBase());
    if (at == selected || at == current) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1, at == selected ? Qt::SolidLine : Qt::DotLine));
        painter.drawRect(cell.adjusted(0, 0, -1, -1));
    }
}

void OrvWeekView::mousePressEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (point.x() < LabelWidth || point.y() < HeaderHeight)
        return;
    const int day = (point.x() - LabelWidth) / CellWidth;
    const int hour = (point.y() - HeaderHeight) / CellHeight;
    if (day > 6 || hour > 23)
        return;
    selected = current = HourAt(day, hour);
    update();
    if (flags.At(WeekdayFromSunday(selected.date()), hour + 1))
        emit HourPicked(selected);
}
