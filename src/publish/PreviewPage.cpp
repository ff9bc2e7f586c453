#include "publish/PreviewPage.h"

#include "publish/PhotoRenderer.h"
#include "app/Paths.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

QString ReadTemplate(const QString &folder, const QString &name)
{
    QFile file(folder + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString Fill(const QString &text, const QHash<QString, QString> &values)
{
    static const QRegularExpression Placeholder(QStringLiteral("\\{\\{(\\w+)\\}\\}"));
    QString filled;
    qsizetype last = 0;
    for (auto match = Placeholder.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        filled += QStringView(text).mid(last, found.capturedStart() - last);
        filled += values.value(found.captured(1)).toHtmlEscaped();
        last = found.capturedEnd();
    }
    filled += QStringView(text).mid(last);
    return filled;
}

// "Canon PowerShot S330", not "Canon Canon PowerShot S330": most cameras name their maker in
// their model already ("NIKON CORPORATION" and "NIKON D850" share the first word).
QString CameraName(const QString &maker, const QString &model)
{
    const QString makerWord = maker.section(u' ', 0, 0);
    if (model.isEmpty() || makerWord.isEmpty() || model.startsWith(makerWord, Qt::CaseInsensitive))
        return model.isEmpty() ? maker : model;
    return maker + u' ' + model;
}

// The first of the folders, in the order asked, that was exported.
QString FirstOf(const QStringList &exported, const QStringList &wanted)
{
    for (const QString &folder : wanted) {
        if (exported.contains(folder))
            return folder;
    }
    return QString();
}

} // namespace

QString MakePreviewPage(const DataList &exportList, const QStringList &sizeFolders, const QString &templatesFolder)
{
    using namespace ExportFolderNames;
    QHash<QString, QString> album;
    for (const QString &key : exportList.DocumentKeys())
        album.insert(key, exportList.GetDocumentProperty(key));
    QString page = Fill(ReadTemplate(templatesFolder, QStringLiteral("preview_htmlhead")), album);

    const QString item = ReadTemplate(templatesFolder, QStringLiteral("preview_htmlitem"));
    const QString preview = FirstOf(sizeFolders, {Preview, Thumbnail, Standard, Full});
    const QString standard = FirstOf(sizeFolders, {Standard, Full, Preview, Thumbnail});
    const QString full = FirstOf(sizeFolders, {Full, Standard, Preview, Thumbnail});
    const int count = exportList.ItemCount();
    for (int index = 1; index <= count; ++index) {
        QHash<QString, QString> values = album;
        for (const DataList::Entry &entry : exportList.ItemAt(index))
            values.insert(exportList.KeyName(entry.key), entry.value);
        const QString file = values.value(QStringLiteral("File"));
        values.insert(QStringLiteral("Flash"), values.value(QStringLiteral("Flash")) == QLatin1String("ON") ? QStringLiteral("YES") : QStringLiteral("NO"));
        values.insert(QStringLiteral("Camera"), CameraName(values.value(QStringLiteral("CameraMaker")), values.value(QStringLiteral("CameraModel"))));
        values.insert(QStringLiteral("Index"), QString::number(index));
        values.insert(QStringLiteral("Previous"), QString::number(index == 1 ? count : index - 1));
        values.insert(QStringLiteral("Next"), QString::number(index == count ? 1 : index + 1));
        const auto image = [&](const QString &folder) { return folder.isEmpty() ? QString() : folder + u'/' + file; };
        values.insert(QStringLiteral("Preview"), image(preview));
        values.insert(QStringLiteral("Standard"), image(standard));
        values.insert(QStringLiteral("Full"), image(full));
        page += Fill(item, values);
    }
    return page + Fill(ReadTemplate(templatesFolder, QStringLiteral("preview_htmltail")), album);
}

Result WritePreviewPage(const DataList &exportList, const QStringList &sizeFolders, const QString &path)
{
    const QByteArray page = MakePreviewPage(exportList, sizeFolders, ResourcesFolder()).toUtf8();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(page) != page.size() || !file.commit())
        return Result::Failure(QStringLiteral("%1: %2").arg(path, file.errorString()));
    return Result::Success();
}
