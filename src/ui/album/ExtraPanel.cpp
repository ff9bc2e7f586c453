#include "ui/album/ExtraPanel.h"

#include "ui/album/AlbumRoles.h"
#include "ui/album/CalendarPages.h"

#include "app/Language.h"
#include "app/Settings.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

const QString LayoutSection = QStringLiteral("Layout");
const QString SelectedTabKey = QStringLiteral("SelectedExtraTab");

QString InfoName(const QString &key)
{
    return GetLocalizedString(key, QStringLiteral("InfoList"));
}

} // namespace

OrvExtraPanel::OrvExtraPanel(QWidget *parent)
    : QTabWidget(parent), calendars(new CalendarPages(this)), fileName(new QLabel), note(new QPlainTextEdit), keywords(new QLineEdit)
{
    setObjectName(QStringLiteral("OrvExtraPanel"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    fileName->setWordWrap(true);
    layout->addWidget(fileName);
    auto *noteLabel = new QLabel(InfoName(QStringLiteral("Description")));
    noteLabel->setBuddy(note);
    layout->addWidget(noteLabel);
    note->setObjectName(QStringLiteral("Description"));
    note->setTabChangesFocus(true);
    layout->addWidget(note, 1);
    auto *keywordsLabel = new QLabel(InfoName(QStringLiteral("Keywords")));
    keywordsLabel->setBuddy(keywords);
    layout->addWidget(keywordsLabel);
    keywords->setObjectName(QStringLiteral("Keywords"));
    layout->addWidget(keywords);
    auto *earth = new QPushButton(GetLocalizedString(QStringLiteral("ButtonShowOnEarth"), QStringLiteral("Form")));
    earth->setObjectName(QStringLiteral("ButtonShowOnEarth"));
    connect(earth, &QPushButton::clicked, this, &OrvExtraPanel::ShowOnEarthClicked);
    layout->addWidget(earth);
    addTab(page, InfoName(QStringLiteral("Description")));
    page->setEnabled(false);
    addTab(calendars->MonthPage(), GetLocalizedString(QStringLiteral("Month"), QStringLiteral("Calendar")));
    addTab(calendars->WeekPage(), GetLocalizedString(QStringLiteral("Week"), QStringLiteral("Calendar")));
    connect(calendars, &CalendarPages::Picked, this, &OrvExtraPanel::CalendarPicked);

    // A note is handed on when the user leaves it; keywords when Enter is pressed or they leave.
    note->installEventFilter(this);
    // Only what the user typed is handed on, never a value the panel was filled with.
    connect(note, &QPlainTextEdit::textChanged, this, [this] { noteTyped = !filling; });
    connect(keywords, &QLineEdit::textEdited, this, [this] { keywordsTyped = true; });
    connect(keywords, &QLineEdit::editingFinished, this, &OrvExtraPanel::Commit);

    setCurrentIndex(std::clamp(SettingInteger(ReadSetting(LayoutSection, SelectedTabKey)), 0, count() - 1));
    connect(this, &QTabWidget::currentChanged, this,
            [](int tab) { WriteSetting(LayoutSection, SelectedTabKey, QString::number(tab)); });
}

void OrvExtraPanel::SetCurrent(const QModelIndex &index)
{
    Commit();
    current = index;
    Fill();
}

void OrvExtraPanel::Fill()
{
    filling = true;
    widget(0)->setEnabled(current.isValid());
    fileName->setText(current.data(FileRole).toString());
    note->setPlainText(current.data(DescriptionRole).toString());
    keywords->setText(current.data(KeywordsRole).toString());
    noteTyped = keywordsTyped = false;
    filling = false;
}

void OrvExtraPanel::RowsChanged(const QModelIndex &from, const QModelIndex &to)
{
    if (current.isValid() && current.row() >= from.row() && current.row() <= to.row())
        Fill();
}

void OrvExtraPanel::Commit()
{
    if (!current.isValid())
        return;
    const int record = current.data(RecordIndexRole).toInt();
    const bool noteGoes = std::exchange(noteTyped, false);
    const bool keywordsGo = std::exchange(keywordsTyped, false);
    if (noteGoes)
        emit ValueEdited(record, QStringLiteral("Description"), note->toPlainText());
    if (keywordsGo)
        emit ValueEdited(record, QStringLiteral("Keywords"), keywords->text());
}

bool OrvExtraPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == note && event->type() == QEvent::FocusOut)
        Commit();
    return QTabWidget::eventFilter(watched, event);
}

void OrvExtraPanel::SetDataList(const DataList *list)
{
    calendars->SetDataList(list);
}

void OrvExtraPanel::RefreshCalendarHighlight()
{
    calendars->RefreshCalendarHighlight();
}
