#pragma once

// Starts the pixel and tag libraries once per process. The main window calls it when it loads;
// every operation of this library starts what it needs by itself, so a test or orvana-cli need
// not. Safe from any thread.
void InitialiseImaging();

// Each half alone: reading tags has no use for the pixel library, whose start-up costs more than
// reading the tags of a hundred photos.
void InitialisePixelLibrary();
void InitialiseTagLibrary();

// Releases what the libraries hold. Called once when the main window unloads; nothing of this
// library may be used afterwards.
void DeInitialiseImaging();
