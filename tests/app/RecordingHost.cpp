#include "RecordingHost.h"

void RecordingHost::Inform(const QString &text)
{
    calls << QStringLiteral("Inform");
    messages << text;
}

void RecordingHost::WaitMilliseconds(int milliseconds)
{
    calls << QStringLiteral("Wait %1").arg(milliseconds);
}

void RecordingHost::OpenDoc(const QString &path, bool askForFolder)
{
    calls << QStringLiteral("OpenDoc [%1] %2").arg(path, askForFolder ? QStringLiteral("true") : QStringLiteral("false"));
}
