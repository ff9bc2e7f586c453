#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

// The window long work shows: what is being done, a bar, and Cancel. It never runs a loop of its
// own; the task runner shows and hides it and passes the work's progress on.
class ProgressWindow : public QDialog {
    Q_OBJECT
public:
    explicit ProgressWindow(QWidget *parent = nullptr);

    void SetStep(const QString &text, int total);
    void SetDone(int done);
    QPushButton *CancelButton() const { return cancel; }

signals:
    // The work named a step (SetStep).
    void StepBegun();
    // The user asked the work to stop, with Cancel, Escape or the window's close box.
    void CancelRequested();

protected:
    void reject() override;

private:
    QLabel *step;
    QProgressBar *bar;
    QPushButton *cancel;
};
