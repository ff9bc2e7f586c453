#pragma once

#include <QPersistentModelIndex>
#include <QTabWidget>

class CalendarPages;
class DataList;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

// OrvExtraPanel: the side panel beside the album's views. Its note tab edits the current photo's
// note and keywords in place; the calendars join it as further tabs. The tab the user chose is
// kept in [Layout] SelectedExtraTab.
class OrvExtraPanel : public QTabWidget {
    Q_OBJECT
public:
    explicit OrvExtraPanel(QWidget *parent = nullptr);

    // The photo whose note is shown; what was typed for the one before is handed on first.
    void SetCurrent(const QModelIndex &index);
    // Shows the current photo's values again, after the album changed them.
    void Reload() { Fill(); }
    // Rows of the model changed: reloads when the current photo is among them, so what is being
    // typed for it is not overwritten by a change to another photo.
    void RowsChanged(const QModelIndex &from, const QModelIndex &to);
    // Hands on what was typed and not yet handed on.
    void Commit();

    // The calendars show the album's list; they follow it through RefreshCalendarHighlight,
    // called after every change of the records.
    void SetDataList(const DataList *list);
    void RefreshCalendarHighlight();
    CalendarPages &Calendars() { return *calendars; }

signals:
    // A record value typed here: record index from 1, its key ("Description", "Keywords").
    void ValueEdited(int record, const QString &key, const QString &text);
    // A marked calendar cell was clicked: its day ("yyyy-mm-dd") or hour ("yyyy-mm-dd hh").
    void CalendarPicked(const QDateTime &date, const QString &format);
    // The album's located photos in the globe viewer.
    void ShowOnEarthClicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Fill();

    QPersistentModelIndex current;
    CalendarPages *calendars;
    QLabel *fileName;
    QPlainTextEdit *note;
    QLineEdit *keywords;
    bool filling = false;
    bool noteTyped = false;
    bool keywordsTyped = false;
};
