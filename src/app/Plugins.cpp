#include "app/Plugins.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString PluginSection = QStringLiteral("Plugin");
const QString FolderSuffix = QStringLiteral(".plugin");

} // namespace

// The ending ".plugin" is matched in any letter case, and the folder keeps its own spelling.
QString PluginFolder(const QString &pluginsFolder, const QString &name)
{
    const QString wanted = name + FolderSuffix;
    const QStringList folders = QDir(pluginsFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        if (folder.compare(wanted, Qt::CaseInsensitive) == 0 && folder.startsWith(name))
            return pluginsFolder + u'/' + folder;
    }
    return pluginsFolder + u'/' + wanted;
}

namespace {

std::vector<PluginInfo> &Loaded()
{
    static std::vector<PluginInfo> plugins;
    return plugins;
}

} // namespace

QString GetPluginValue(const QString &pluginsFolder, const QString &name, const QString &key)
{
    const QString resources = PluginFolder(pluginsFolder, name) + QStringLiteral("/Resources/");
    QString value = ProfileFile::ReadString(resources + QStringLiteral("Plugin.ini"), PluginSection, key);
    if (value.isEmpty())
        value = ProfileFile::ReadString(resources + CurrentLanguage() + QStringLiteral("/Localizable.ini"), PluginSection, key);
    if (value.isEmpty() && CurrentLanguage() != QLatin1String("English"))
        value = ProfileFile::ReadString(resources + QStringLiteral("English/Localizable.ini"), PluginSection, key);
    return value;
}

std::vector<PluginInfo> FindPlugins(const QString &pluginsFolder)
{
    std::vector<PluginInfo> found;
    if (!FolderExists(pluginsFolder))
        return found;
    const QStringList folders = QDir(pluginsFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &folder : folders) {
        if (!folder.endsWith(FolderSuffix, Qt::CaseInsensitive))
            continue;
        const QString name = folder.chopped(FolderSuffix.size());
        if (GetPluginValue(pluginsFolder, name, QStringLiteral("Hidden")).toLongLong() != 0)
            continue;
        const QString language = GetPluginValue(pluginsFolder, name, QStringLiteral("LanguageName"));
        if (!language.isEmpty() && language != QLatin1String("English") && language != CurrentLanguage())
            continue;
        const QString icon = pluginsFolder + u'/' + folder + QStringLiteral("/Resources/Plugin.gif");
        found.push_back({name, GetPluginValue(pluginsFolder, name, QStringLiteral("Menu")),
                         GetPluginValue(pluginsFolder, name, QStringLiteral("Type")),
                         GetPluginValue(pluginsFolder, name, QStringLiteral("Command")), QFileInfo::exists(icon) ? icon : QString()});
    }
    return found;
}

QString PluginMenuFor(const QString &type)
{
    if (type == QLatin1String("Importer"))
        return QStringLiteral("mnuImporterPlugin");
    if (type == QLatin1String("Editor"))
        return QStringLiteral("mnuEditorPlugin");
    if (type == QLatin1String("AlbumExporter"))
        return QStringLiteral("mnuAlbumExporterPlugin");
    if (type == QLatin1String("Exporter") || type == QLatin1String("WebExporter"))
        return QStringLiteral("mnuExporterPlugin");
    if (type == QLatin1String("PhotoExporter"))
        return QStringLiteral("mnuPhotoExporterPlugin");
    return {};
}

void LoadPlugins()
{
    Loaded() = FindPlugins(PluginsFolder());
}

const std::vector<PluginInfo> &LoadedPlugins()
{
    return Loaded();
}
