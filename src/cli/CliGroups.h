#pragma once

#include "cli/CliCommand.h"

// The command groups of orvana-cli, one file each (Cli<Group>.cpp).
const CliGroup &AlbumCommands();
const CliGroup &ConvertCommand();
const CliGroup &GpsCommands();
const CliGroup &SettingsCommands();
const CliGroup &TextCommand();
const CliGroup &FtpCommands();
const CliGroup &HttpCommands();
const CliGroup &ImageCommands();
const CliGroup &PluginCommands();
const CliGroup &PublishCommands();
const CliGroup &LibraryCommands();
