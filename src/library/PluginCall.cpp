#include "library/PluginCall.h"
#include "library/PluginAnswer.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "app/Plugins.h"
#include "app/ProgressSink.h"
#include "app/Version.h"
#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryFile>

namespace {

constexpr int WaitSliceMs = 100;
constexpr qsizetype ErrorTailBytes = 400;

QString Joined(const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts << QString::number(number);
    return texts.join(u',');
}

QByteArray CallFile(const PluginValues &values)
{
    QByteArray text;
    for (const auto &[key, value] : values) {
        QString flat = value;
        flat.replace(u'\r', u' ').replace(u'\n', u' ');
        text += key.toUtf8() + '=' + flat.toUtf8() + '\n';
    }
    return text;
}

} // namespace

PluginValues PluginValuesFor(const AlbumDocument &document, int current, const QList<int> &selected, quint64 mainWindow,
                             quint64 documentWindow)
{
    PluginValues values{
        {QStringLiteral("AppName"), QStringLiteral("Orvana")},
        {QStringLiteral("AppPath"), AppPath()},
        {QStringLiteral("AppVersion"), QLatin1String(OrvanaVersion)},
        {QStringLiteral("AppLanguage"), CurrentLanguage()},
        {QStringLiteral("MainWindowHandle"), QString::number(mainWindow)},
        {QStringLiteral("DocumentWindowHandle"), QString::number(documentWindow)},
        {QStringLiteral("DocumentPath"), document.Path()},
        {QStringLiteral("CurrentItemID"), QString::number(current)},
        {QStringLiteral("SelectedItems"), Joined(selected)},
    };
    for (const int index : selected) {
        const QString path = document.PhotoFilePath(index);
        if (!path.isEmpty() && !path.contains(u'\n') && !path.contains(u'\r'))
            values.emplace_back(QStringLiteral("SelectedFiles"), path);
    }
    return values;
}

bool RegisterPlugin(const QString &pluginsFolder, const QString &name)
{
    QFile program(PluginFolder(pluginsFolder, name) + u'/' + GetPluginValue(pluginsFolder, name, QStringLiteral("File")));
    if (!QFileInfo(program.fileName()).isFile())
        return false;
    const QFileDevice::Permissions readable = program.permissions();
    QFileDevice::Permissions executable = readable | QFileDevice::ExeOwner | QFileDevice::ExeUser;
    if (readable & QFileDevice::ReadGroup)
        executable |= QFileDevice::ExeGroup;
    if (readable & QFileDevice::ReadOther)
        executable |= QFileDevice::ExeOther;
    return program.setPermissions(executable);
}

PluginRun RunPlugin(const QString &pluginsFolder, const QString &name, const PluginValues &values, ProgressSink &progress,
                    int timeoutSeconds)
{
    PluginRun run;
    const QString folder = PluginFolder(pluginsFolder, name);
    const QString fileName = GetPluginValue(pluginsFolder, name, QStringLiteral("File"));
    const QString program = folder + u'/' + fileName;
    if (fileName.isEmpty() || !QFileInfo(program).isFile()) {
        run.result = Result::Failure(QStringLiteral("The plug-in \"%1\" has no program at %2.").arg(name, program));
        return run;
    }
    // The call file is the user's own (mode 600), and goes with the run.
    QTemporaryFile call(QDir::tempPath() + QStringLiteral("/orvana-plugin-XXXXXX.txt"));
    if (!call.open() || call.write(CallFile(values)) < 0 || !call.flush()) {
        run.result = Result::Failure(QStringLiteral("Cannot write the plug-in's call file: %1").arg(call.errorString()));
        return run;
    }
    call.close();

    QProcess process;
    process.setProgram(program);
    process.setArguments({call.fileName()});
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start();
    if (!process.waitForStarted() && RegisterPlugin(pluginsFolder, name)) {
        process.start();
        process.waitForStarted();
    }
    if (process.state() == QProcess::NotRunning && process.error() == QProcess::FailedToStart) {
        run.result = Result::Failure(QStringLiteral("The plug-in \"%1\" cannot start: %2").arg(name, process.errorString()));
        return run;
    }
    QElapsedTimer clock;
    clock.start();
    QByteArray errors;
    while (!process.waitForFinished(WaitSliceMs) && process.state() != QProcess::NotRunning) {
        errors = (errors + process.readAllStandardError()).right(ErrorTailBytes);
        if (progress.Cancelled() || clock.elapsed() > qint64(timeoutSeconds) * 1000) {
            process.kill();
            process.waitForFinished();
            run.result = Result::Failure(progress.Cancelled()
                                             ? QStringLiteral("The plug-in \"%1\" was stopped.").arg(name)
                                             : QStringLiteral("The plug-in \"%1\" did not finish within %2 seconds and was stopped.").arg(name).arg(timeoutSeconds));
            return run;
        }
    }
    errors = (errors + process.readAllStandardError()).right(ErrorTailBytes);
    if (process.exitStatus() == QProcess::CrashExit || process.exitCode() != 0) {
        const QString how = process.exitStatus() == QProcess::CrashExit ? QStringLiteral("stopped unexpectedly")
                                                                         : QStringLiteral("ended with error %1").arg(process.exitCode());
        run.result = Result::Failure(QStringLiteral("The plug-in \"%1\" %2.").arg(name, how) +
                                     (errors.trimmed().isEmpty() ? QString() : u'\n' + QString::fromUtf8(errors.trimmed())));
        return run;
    }
    QFile answer(call.fileName());
    if (!answer.open(QIODevice::ReadOnly)) {
        run.result = Result::Failure(QStringLiteral("The plug-in \"%1\" left no answer file.").arg(name));
        return run;
    }
    return ReadPluginAnswer(answer.readAll(), PhotoRecord::AllowNonJpeg());
}

PluginOutcome LaunchPlugin(AlbumDocument &document, const QString &pluginsFolder, const QString &name, const PluginValues &values,
                           ProgressSink &progress, int timeoutSeconds)
{
    PluginOutcome outcome;
    PluginRun run = RunPlugin(pluginsFolder, name, values, progress, timeoutSeconds);
    outcome.run = run.result;
    if (!run.result || run.importedFiles.isEmpty() ||
        GetPluginValue(pluginsFolder, name, QStringLiteral("Type")) != QLatin1String("Importer"))
        return outcome;
    OrvAlbumImporter importer;
    importer.SetDocument(&document);
    outcome.imported = importer.ImportFiles(run.importedFiles, progress);
    return outcome;
}
