#pragma once

#include "cli/CliAlbumSupport.h"

// Album verbs that work on an open album; each returns the exit code.
int AlbumImport(const CliArguments &args, AlbumDocument &album);
int AlbumCameraImport(const CliArguments &args, AlbumDocument &album);
int AlbumCheck(const CliArguments &args, AlbumDocument &album);
int AlbumSearch(const CliArguments &args, AlbumDocument &album);
int AlbumSetNote(const CliArguments &args, AlbumDocument &album);
int AlbumDelete(const CliArguments &args, AlbumDocument &album);
int AlbumCopy(const CliArguments &args, AlbumDocument &album);
int AlbumCut(const CliArguments &args, AlbumDocument &album);
int AlbumPaste(const CliArguments &args, AlbumDocument &album);
int AlbumKeywordsCopy(const CliArguments &args, AlbumDocument &album);
int AlbumKeywordsPaste(const CliArguments &args, AlbumDocument &album);
int AlbumRotate(const CliArguments &args, AlbumDocument &album);
int AlbumEdit(const CliArguments &args, AlbumDocument &album);
int AlbumAdjust(const CliArguments &args, AlbumDocument &album);
int AlbumCrop(const CliArguments &args, AlbumDocument &album);
int AlbumRevert(const CliArguments &args, AlbumDocument &album);
int AlbumWriteMetadata(const CliArguments &args, AlbumDocument &album);
int AlbumCalendar(const CliArguments &args, AlbumDocument &album);
