#pragma once

#include "publish/AlbumExportArguments.h"
#include "publish/ExportSource.h"
#include "datalist/DataList.h"

// The export list "album.plist": the canvas sizes and the album's texts, one item per photo with
// the exported keys of its record, then "ItemCount".
DataList MakeExportList(const ExportSource &source, const AlbumExportArguments &arguments);
