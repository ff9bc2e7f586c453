#pragma once

// Starts the pixel and tag libraries once per process. The main window calls it when it loads;
// every operation of this library calls it too, so a test or orvana-cli need not. Safe from
// any thread.
void InitialiseImaging();

// Releases what the libraries hold. Called once when the main window unloads; nothing of this
// library may be used afterwards.
void DeInitialiseImaging();
