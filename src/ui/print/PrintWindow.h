#pragma once

#include "ui/print/PhotoSheet.h"

#include <QDialog>
#include <QPrinter>

class QCheckBox;
class QComboBox;
class QPrintPreviewWidget;

// frmPrint: the chosen photos as they will print, with how many go on a page, fit or fill, and
// their notes as captions; Print hands them to the system's print dialog, which prints to paper
// or to a PDF file. The photos come decoded: this window never decodes.
class PrintWindow : public QDialog {
    Q_OBJECT
public:
    PrintWindow(QList<PrintedPhoto> photos, QWidget *parent = nullptr);

private:
    SheetOptions Options() const;
    void Print();

    QList<PrintedPhoto> photos;
    QPrinter printer;
    QPrintPreviewWidget *preview;
    QComboBox *perPage;
    QCheckBox *fill;
    QCheckBox *captions;
};
