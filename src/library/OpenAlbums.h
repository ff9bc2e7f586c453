#pragma once

#include <QString>

// The albums open in windows, as the library's folder commands see them: before an album is
// renamed or thrown away, every open document of it (or of any album inside a folder) is closed,
// so that no document keeps a path that no longer exists.
class OpenAlbums {
public:
    virtual ~OpenAlbums() = default;
    // Closes the documents whose album is the path or lies inside it; false when one refuses
    // (its changes could not be saved), and then nothing on disk may change.
    virtual bool CloseAlbumsUnder(const QString &path) = 0;
};

// Where no album is open in a window (orvana-cli).
class NoOpenAlbums : public OpenAlbums {
public:
    bool CloseAlbumsUnder(const QString &) override { return true; }
};
