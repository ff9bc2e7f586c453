#pragma once

#include <QWidget>
#include <functional>
#include <memory>

class AlbumCommands;
class AlbumDocument;
class AlbumModel;
class MessageBoxPrompter;
class OrvDetailView;
class OrvExtraPanel;
class OrvThumbnailView;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;
class ThumbnailCache;
struct CommandTarget;

// frmDocument: one open album in the main window's document area. The main window routes the
// album commands of its menus here by their command names ("mnuByTime", "mnuRotateRight", ...).
class AlbumWindow : public QWidget {
    Q_OBJECT
public:
    AlbumWindow(std::unique_ptr<AlbumDocument> document, QWidget *parent = nullptr);
    ~AlbumWindow() override;

    // The album folder, by which the main window finds an album that is already open.
    QString Path() const;
    AlbumDocument &Document();

    // The commands this window carries out; the main window enables its album commands by them.
    bool HasCommand(const QString &name) const;
    // Carries out one command; false when this window has no such command.
    bool RunCommand(const QString &name);

    // Saves a modified album and lets long work stop at the photo in hand; false keeps the
    // window open (the user cancelled, or saving failed and the user chose to stay).
    bool CloseAlbum();

signals:
    // The folder name, with "*" while there are unsaved changes.
    void CaptionChanged(const QString &caption);

private:
    struct Command {
        QString name;
        bool isLong;
        std::function<void()> run;
    };
    void BuildCommands();
    void BuildLayout(bool showFileNames);
    void BuildPhotoMenu();
    void RunLibraryCommand(const QString &name);
    CommandTarget Target() const;
    void SelectRows(const std::function<bool(int row)> &wanted);
    void ShowDetail(int row);
    void ShowGrid();
    void CurrentRowChanged(int row);
    void Search();
    void SetUIByDataList();
    void SetDataListByUI();
    void ShowHighlights(const QList<int> &found);
    void RefreshNumberLabel(const QString &found = QString());
    void RefreshCaption();
    QString CurrentPhotoPath() const;

    std::unique_ptr<AlbumDocument> document;
    std::unique_ptr<MessageBoxPrompter> prompter;
    std::unique_ptr<AlbumCommands> commands;
    std::vector<Command> table;
    AlbumModel *rows;
    ThumbnailCache *thumbnails;
    OrvThumbnailView *grid = nullptr;
    OrvDetailView *detail = nullptr;
    OrvExtraPanel *panel = nullptr;
    QStackedWidget *views = nullptr;
    QLineEdit *title = nullptr;
    QLineEdit *identification = nullptr;
    QLineEdit *description = nullptr;
    QLineEdit *search = nullptr;
    QLabel *number = nullptr;
    QMenu *photoMenu = nullptr;
    QString caption;
};
