#pragma once

#include "gps/TrackSources.h"

#include <QDialog>
#include <functional>

class QComboBox;
class QProcess;
class QProgressBar;
class QPushButton;
class QTimer;

// frmImportFromGPSReceiver: the receiver's make and port ([GPS] Receiver and SerialPort, read when
// it opens and written when it closes) and the download. GPSBabel runs as a process the dialog
// does not wait on; TimerProgress moves the bar meanwhile. When it has ended, `import` is handed
// the log type to read the download file into the log (the window does that on a worker) and the
// dialog closes.
class ReceiverDialog : public QDialog {
    Q_OBJECT
public:
    using Import = std::function<void(LogType)>;
    ReceiverDialog(LogType logType, Import import, QWidget *parent);
    ~ReceiverDialog() override;

    bool Downloading() const;

protected:
    void done(int result) override;

private:
    void Download();
    void Downloaded();

    LogType logType;
    Import import;
    QComboBox *receiver;
    QComboBox *port;
    QProgressBar *bar;
    QPushButton *start;
    QTimer *timer;
    QProcess *process = nullptr;
};
