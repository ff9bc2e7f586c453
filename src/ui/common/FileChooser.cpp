#include "ui/common/FileChooser.h"

#include <QFileDialog>

QString DialogFileChooser::ChooseFolder(QWidget *parent, const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(parent, title, start);
}

QString DialogFileChooser::ChooseNewFolder(QWidget *parent, const QString &title, const QString &filter, const QString &start)
{
    // An album is a folder, but the user names it like a file: a save dialog lets them type a
    // name that does not exist yet.
    return QFileDialog::getSaveFileName(parent, title, start, filter, nullptr, QFileDialog::DontConfirmOverwrite);
}

QStringList DialogFileChooser::ChooseFiles(QWidget *parent, const QString &title, const QString &start)
{
    // No filter: the importer itself leaves out what is not a photo, and says so.
    return QFileDialog::getOpenFileNames(parent, title, start);
}
