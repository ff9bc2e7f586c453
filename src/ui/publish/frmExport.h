#pragma once

#include "publish/AlbumExportArguments.h"

#include <QDialog>
#include <QHash>

class AlbumDocument;
class FileChooser;
class QAbstractButton;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class frmFTPLoginManager;

// The export dialog: the sizes, watermark and server of a web export or a web sync of one album.
// Continue checks the standard size, keeps the options in the album and the server in the
// settings, and hands the options on through Continued.
class frmExport : public QDialog {
    Q_OBJECT
public:
    frmExport(FileChooser &chooser, QWidget *parent = nullptr);

    void InitWindowForDocument(AlbumDocument &document);
    // The same dialog for publishing: the upload captions and the server fields.
    void InitWindowForWebSync(AlbumDocument &document);

    // Fills the server fields, as a favourite chosen from the menu does.
    void SetServerFields(const QString &address, const QString &login, const QString &password, const QString &directory);
    bool IsWebSync() const { return webSync; }

    // What Continue does, also for tests: false, with the message shown, when the size is refused.
    bool ButtonContinue_Click();

signals:
    void Continued(const AlbumExportArguments &arguments);

private:
    void Build();
    void Init(AlbumDocument &document, bool forWebSync);
    void ShowWatermark();
    void ButtonWatermark_Click();
    void ButtonTest_Click();
    void ButtonSaveAsFavorite_Click();
    QString WatermarkPath() const;
    AlbumExportArguments ArgumentsFromControls() const;

    FileChooser &chooser;
    AlbumDocument *document = nullptr;
    AlbumExportArguments arguments;
    bool webSync = false;
    // The controls of the persisted options, by the option's name.
    QHash<QString, QCheckBox *> checks;
    QHash<QString, QLineEdit *> texts;
    QLabel *LabelResizeNote;
    QCheckBox *CheckExportSelected;
    QCheckBox *CheckExportNoted;
    QCheckBox *CheckForceUpdateAll;
    QLabel *PictureWatermark;
    QPushButton *ButtonWatermark;
    QGroupBox *FrameServer;
    QRadioButton *OptionStandaloneServer;
    QRadioButton *OptionSharedServer;
    QLineEdit *TextSharedServerLoginName;
    QLineEdit *TextSharedServerPassword;
    QPushButton *ButtonTest;
    QPushButton *ButtonFavorites;
    QPushButton *ButtonContinue;
    frmFTPLoginManager *favourites;
};
