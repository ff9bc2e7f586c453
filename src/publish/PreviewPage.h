#pragma once

#include "datalist/DataList.h"
#include "app/Result.h"

#include <QString>
#include <QStringList>

// "album.html" of an export folder, made from the templates "preview_htmlhead", "preview_htmlitem"
// (once per photo) and "preview_htmltail" of the resources folder. In the templates "{{Key}}"
// stands for a value, HTML-escaped: the album's texts and "ItemCount" anywhere; in the item
// template also the photo's keys, "Index", "Previous", "Next" (the neighbours' indices, going
// round), "Preview" and "Standard" (the image shown in the grid and in the viewer, from the
// largest size folder exported that suits each) and "Full" (the full-size image or, without one,
// the standard image). "Flash" reads "YES" or "NO".
QString MakePreviewPage(const DataList &exportList, const QStringList &sizeFolders, const QString &templatesFolder);
Result WritePreviewPage(const DataList &exportList, const QStringList &sizeFolders, const QString &path);
