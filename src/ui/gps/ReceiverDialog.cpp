#include "ui/gps/ReceiverDialog.h"

#include "ui/Localize.h"
#include "ui/gps/GpsTexts.h"
#include "app/Settings.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString Section = QStringLiteral("GPS");
// GPSBabel tells nothing of its progress: the bar goes round while it runs.
constexpr int TimerStepMs = 100;
constexpr int BarSteps = 50;

QLabel *Hint(const char *name, const char *key)
{
    auto *label = new QLabel(GpsUi::GpsMessage(key));
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    return label;
}

} // namespace

ReceiverDialog::ReceiverDialog(LogType type, Import importDownload, QWidget *parent)
    : QDialog(parent), logType(type), import(std::move(importDownload)), receiver(new QComboBox), port(new QComboBox),
      bar(new QProgressBar), timer(new QTimer(this))
{
    setObjectName(QStringLiteral("frmImportFromGPSReceiver"));
    setWindowTitle(QStringLiteral("@ImportFromGPSReceiver"));
    receiver->setObjectName(QStringLiteral("ComboGPSReceiver"));
    port->setObjectName(QStringLiteral("ComboSerialPort"));
    for (const ReceiverMake &make : ReceiverMakes())
        receiver->addItem(make.shown, make.format);
    port->addItems(SerialPortEntries());
    receiver->setCurrentIndex(std::clamp(SettingInteger(ReadSetting(Section, QStringLiteral("Receiver"))), 0, receiver->count() - 1));
    port->setCurrentIndex(std::clamp(SettingInteger(ReadSetting(Section, QStringLiteral("SerialPort"))), 0, port->count() - 1));

    auto *form = new QFormLayout;
    form->addRow(new QLabel(QStringLiteral("@GPSReceiver")), receiver);
    form->addRow(new QLabel(QStringLiteral("@SerialPort")), port);
    form->addRow(new QLabel(logType == LogType::Tracks ? QStringLiteral("@TrackLogs") : QStringLiteral("@WaypointLogs")));
    bar->setObjectName(QStringLiteral("ProgressBar"));
    bar->setRange(0, BarSteps);
    bar->setValue(0);
    bar->setTextVisible(false);
    timer->setObjectName(QStringLiteral("TimerProgress"));
    timer->setInterval(TimerStepMs);
    connect(timer, &QTimer::timeout, this, [this] { bar->setValue((bar->value() + 1) % (BarSteps + 1)); });

    auto *buttons = new QDialogButtonBox;
    start = buttons->addButton(QStringLiteral("@CoolButtonImport"), QDialogButtonBox::AcceptRole);
    start->setObjectName(QStringLiteral("CoolButtonImport"));
    QPushButton *cancel = buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("ButtonCancel"));
    connect(start, &QPushButton::clicked, this, &ReceiverDialog::Download);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(Hint("LabelSerialPorts", "MessageSerialPorts"));
    layout->addWidget(Hint("LabelGPSNotListed", "MessageGPSNotListed"));
    layout->addWidget(bar);
    layout->addWidget(buttons);
    LocalizeForm(this);
}

ReceiverDialog::~ReceiverDialog()
{
    if (process) {
        process->disconnect(this);
        process->kill();
    }
}

bool ReceiverDialog::Downloading() const
{
    return process != nullptr;
}

void ReceiverDialog::done(int result)
{
    WriteSetting(Section, QStringLiteral("Receiver"), QString::number(receiver->currentIndex()));
    WriteSetting(Section, QStringLiteral("SerialPort"), QString::number(port->currentIndex()));
    // Cancel while GPSBabel runs stops it; nothing is read then.
    if (process) {
        process->disconnect(this);
        process->kill();
        process->deleteLater();
        process = nullptr;
    }
    timer->stop();
    QDialog::done(result);
}

void ReceiverDialog::Download()
{
    if (process)
        return;
    const ReceiverRun run = PrepareReceiverDownload(receiver->currentData().toString(), port->currentText(), logType);
    process = new QProcess(this);
    // GPSBabel's messages are not read: success is the download file being there.
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setStandardOutputFile(QProcess::nullDevice());
    connect(process, &QProcess::finished, this, &ReceiverDialog::Downloaded);
    connect(process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Downloaded();
    });
    start->setEnabled(false);
    receiver->setEnabled(false);
    port->setEnabled(false);
    timer->start();
    process->start(run.program, run.arguments);
}

void ReceiverDialog::Downloaded()
{
    if (!process)
        return;
    process->disconnect(this);
    process->deleteLater();
    process = nullptr;
    timer->stop();
    bar->setValue(BarSteps);
    const LogType type = logType;
    const Import importDownload = import;
    accept();
    importDownload(type);
}
