#include "ui/album/MonthView.h"

#include "ui/album/CalendarStyle.h"

#include "app/Language.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>

namespace {

constexpr int CellWidth = 26;
constexpr int CellHeight = 18;
constexpr int Margin = 6;
constexpr int YearHeight = 28;
// A month block: its name, the weekday header, six week rows and a gap.
constexpr int MonthHeight = CellHeight * 8 + 8;

} // namespace

OrvMonthView::OrvMonthView(QWidget *parent) : QWidget(parent), year(QDate::currentDate().year())
{
    setObjectName(QStringLiteral("OrvMonthView"));
    setMinimumSize(sizeHint());
}

QSize OrvMonthView::sizeHint() const
{
    return {CellWidth * 7 + 2 * Margin, YearHeight + 12 * MonthHeight + Margin};
}

void OrvMonthView::SetYear(int shown)
{
    year = shown;
    update();
}

void OrvMonthView::UpdateHighlightFlags()
{
    flags = records ? ComputeMonthFlags(*records, year) : MonthFlags();
    update();
}

void OrvMonthView::ShowMonth(int month)
{
    // The view sits in the scroll area's viewport.
    if (auto *area = parentWidget() ? qobject_cast<QScrollArea *>(parentWidget()->parentWidget()) : nullptr) {
        const QRect block = MonthRect(month);
        area->ensureVisible(block.center().x(), block.top(), 0, 0);
        area->ensureVisible(block.center().x(), block.bottom(), 0, 0);
    }
}

void OrvMonthView::SetCurrentDay(const QDate &day)
{
    current = day;
    if (day.isValid() && day.year() != year)
        SetYear(day.year());
    update();
}

QString OrvMonthView::GetMonthName(int month)
{
    return CalendarText(QStringLiteral("MonthName%1").arg(month));
}

QRect OrvMonthView::MonthRect(int month) const
{
    return {Margin, YearHeight + (month - 1) * MonthHeight, CellWidth * 7, MonthHeight};
}

QRect OrvMonthView::DayRect(const QDate &day) const
{
    const QRect block = MonthRect(day.month());
    const int row = MonthGridRow(day);
    const int column = WeekdayFromSunday(day);
    return {block.left() + (column - 1) * CellWidth, block.top() + (row + 1) * CellHeight, CellWidth, CellHeight};
}

QDate OrvMonthView::DayAt(const QPoint &point) const
{
    for (int month = 1; month <= 12; ++month) {
        if (!MonthRect(month).contains(point))
            continue;
        const QDate first(year, month, 1);
        for (int day = 1; day <= first.daysInMonth(); ++day) {
            const QDate date(year, month, day);
            if (DayRect(date).contains(point))
                return date;
        }
    }
    return {};
}

void OrvMonthView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setFont(CalendarFont("FontNameTitle", 13, true));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(Margin, 0, CellWidth * 7, YearHeight), Qt::AlignCenter, QDate(year, 1, 1).toString(QStringLiteral("yyyy")));
    for (int month = 1; month <= 12; ++month) {
        DrawBaseGrid(painter, month);
        const QDate first(year, month, 1);
        for (int day = 1; day <= first.daysInMonth(); ++day)
            DrawCell(painter, QDate(year, month, day));
    }
}

void OrvMonthView::DrawBaseGrid(QPainter &painter, int month) const
{
    const QRect block = MonthRect(month);
    painter.setFont(CalendarFont("FontNameLabel", 9, true));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(block.left(), block.top(), block.width(), CellHeight), Qt::AlignCenter, GetMonthName(month));
    painter.setPen(palette().color(QPalette::PlaceholderText));
    for (int weekday = 1; weekday <= 7; ++weekday)
        painter.drawText(QRect(block.left() + (weekday - 1) * CellWidth, block.top() + CellHeight, CellWidth, CellHeight),
                         Qt::AlignCenter, CalendarText(QStringLiteral("WeekdayShort%1").arg(weekday)).left(2));
}

void OrvMonthView::DrawCell(QPainter &painter, const QDate &day) const
{
    const QRect cell = DayRect(day).adjusted(1, 1, -1, -1);
    const bool marked = flags.At(day.month(), MonthGridRow(day), WeekdayFromSunday(day));
    if (marked)
        painter.fillRect(cell, palette().highlight());
    if (day == selected || day == current) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1, day == selected ? Qt::SolidLine : Qt::DotLine));
        painter.drawRect(cell.adjusted(0, 0, -1, -1));
    }
    painter.setFont(CalendarFont("FontNameText", 8, marked));
    painter.setPen(palette().color(marked ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(cell, Qt::AlignCenter, QString::number(day.day()));
}

void OrvMonthView::mousePressEvent(QMouseEvent *event)
{
    const QDate day = DayAt(event->position().toPoint());
    if (!day.isValid())
        return;
    selected = current = day;
    update();
    // Only a marked day has photos to pick.
    if (flags.At(day.month(), MonthGridRow(day), WeekdayFromSunday(day)))
        emit DayPicked(day);
}
