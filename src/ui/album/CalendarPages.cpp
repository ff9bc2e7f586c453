#include "ui/album/CalendarPages.h"

#include "ui/album/MonthView.h"
#include "ui/album/WeekView.h"

#include "app/Language.h"
#include "library/CalendarFlags.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int RefreshDelayMs = 150;

QToolButton *StepButton(Qt::ArrowType arrow, const QString &name)
{
    auto *button = new QToolButton;
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setObjectName(name);
    return button;
}

} // namespace

CalendarPages::CalendarPages(QWidget *owner)
    : QObject(owner), month(new OrvMonthView), week(new OrvWeekView), refresh(new QTimer(this))
{
    monthPage = Page(month, yearCaption, [this](int by) {
        month->SetYear(month->GetYear() + by);
        month->UpdateHighlightFlags();
        monthStale = false;
        RefreshCaptions();
    });
    weekPage = Page(week, weekCaption, [this](int by) {
        week->SetWeek(week->GetWeek().addDays(7 * by));
        week->UpdateHighlightFlags();
        RefreshCaptions();
    });
    refresh->setSingleShot(true);
    refresh->setInterval(RefreshDelayMs);
    connect(refresh, &QTimer::timeout, this, &CalendarPages::UpdateNow);
    connect(month, &OrvMonthView::DayPicked, this, [this](const QDate &day) {
        ShowWeekOf(day);
        emit Picked(QDateTime(day, QTime(0, 0), Qt::UTC), QStringLiteral("yyyy-mm-dd"));
    });
    connect(week, &OrvWeekView::HourPicked, this, [this](const QDateTime &hour) { emit Picked(hour, QStringLiteral("yyyy-mm-dd hh")); });
    monthPage->installEventFilter(this);
    weekPage->installEventFilter(this);
    RefreshCaptions();
}

bool CalendarPages::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && (watched == monthPage || watched == weekPage))
        UpdateNow();
    return QObject::eventFilter(watched, event);
}

QWidget *CalendarPages::Page(QWidget *view, QLabel *&caption, const std::function<void(int)> &step)
{
    auto *page = new QWidget;
    auto *bar = new QHBoxLayout;
    QToolButton *back = StepButton(Qt::LeftArrow, QStringLiteral("Previous"));
    QToolButton *on = StepButton(Qt::RightArrow, QStringLiteral("Next"));
    caption = new QLabel;
    caption->setAlignment(Qt::AlignCenter);
    bar->addWidget(back);
    bar->addWidget(caption, 1);
    bar->addWidget(on);
    connect(back, &QToolButton::clicked, this, [step] { step(-1); });
    connect(on, &QToolButton::clicked, this, [step] { step(1); });
    auto *area = new QScrollArea;
    area->setWidget(view);
    area->setAlignment(Qt::AlignHCenter);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(bar);
    layout->addWidget(area, 1);
    return page;
}

void CalendarPages::SetDataList(const DataList *list)
{
    records = list;
    month->SetDataList(list);
    week->SetDataList(list);
    RefreshCalendarHighlight();
}

void CalendarPages::RefreshCalendarHighlight()
{
    monthStale = weekStale = true;
    refresh->start();
}

void CalendarPages::UpdateNow()
{
    refresh->stop();
    if (!placed && records) {
        if (const QDate latest = LatestCaptureDay(*records); latest.isValid()) {
            placed = true;
            month->SetYear(latest.year());
            monthStale = true;
            ShowWeekOf(latest);
            month->ShowMonth(latest.month());
        }
    }
    if (monthStale && monthPage->isVisible()) {
        month->UpdateHighlightFlags();
        monthStale = false;
    }
    if (weekStale && weekPage->isVisible()) {
        week->UpdateHighlightFlags();
        weekStale = false;
    }
    RefreshCaptions();
}

void CalendarPages::ShowWeekOf(const QDate &day)
{
    week->SetWeek(day.addDays(-(WeekdayFromSunday(day) - 1)));
    // Marked when it shows, unless it is in sight now.
    weekStale = true;
    if (weekPage->isVisible()) {
        week->UpdateHighlightFlags();
        weekStale = false;
    }
    RefreshCaptions();
}

void CalendarPages::RefreshCaptions()
{
    yearCaption->setText(QDate(month->GetYear(), 1, 1).toString(QStringLiteral("yyyy")));
    weekCaption->setText(week->GetWeek().toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" – ")
                         + week->GetWeek().addDays(6).toString(QStringLiteral("yyyy-MM-dd")));
}
