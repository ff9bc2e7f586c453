#include "ui/album/AlbumWindow.h"

#include "library/AlbumDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

AlbumWindow::AlbumWindow(std::unique_ptr<AlbumDocument> opened, QWidget *parent)
    : QWidget(parent), document(std::move(opened))
{
    setObjectName(QStringLiteral("frmDocument"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QDir::toNativeSeparators(document->Path()), this));
    setWindowTitle(QFileInfo(document->Path()).fileName());
}

AlbumWindow::~AlbumWindow() = default;

QString AlbumWindow::Path() const
{
    return document->Path();
}

AlbumDocument &AlbumWindow::Document()
{
    return *document;
}

bool AlbumWindow::HasCommand(const QString &) const
{
    return false;
}

bool AlbumWindow::RunCommand(const QString &)
{
    return false;
}

bool AlbumWindow::CloseAlbum()
{
    return !document->IsModified() || document->SaveDocumentToFile().ok;
}
