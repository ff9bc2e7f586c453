#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// The file and folder pickers of the windows' commands. The windows ask through this so a test
// can answer with a script; an empty answer means the user cancelled.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    virtual QString ChooseFolder(QWidget *parent, const QString &title, const QString &start) = 0;
    // A name for a folder that does not exist yet.
    virtual QString ChooseNewFolder(QWidget *parent, const QString &title, const QString &filter, const QString &start) = 0;
    virtual QStringList ChooseFiles(QWidget *parent, const QString &title, const QString &start) = 0;
};

// The desktop's own file dialogs.
class DialogFileChooser : public FileChooser {
public:
    QString ChooseFolder(QWidget *parent, const QString &title, const QString &start) override;
    QString ChooseNewFolder(QWidget *parent, const QString &title, const QString &filter, const QString &start) override;
    QStringList ChooseFiles(QWidget *parent, const QString &title, const QString &start) override;
};
