# The Debian package: `cpack -G DEB` in a build tree (scripts/package does it) makes
# orvana_VERSION_ARCH.deb from what `cmake --install` puts under /usr.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvana)
set(CPACK_PACKAGE_VENDOR "The Orvana developers")
set(CPACK_PACKAGE_CONTACT "The Orvana developers <packaging@orvana.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "photo organiser: albums, GPS tags and web publishing")
set(CPACK_PACKAGE_INSTALL_DIRECTORY orvana)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.orvana.org)
# The extended description; CPack puts the summary above it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Orvana keeps photos in albums, folders holding a property list and
thumbnails, and shows them as a grid, a detail view and calendars. It imports
photos from camera cards and folders, tags them with positions from GPS
track logs, writes captions, keywords and positions into the files, and
publishes albums as web pages. orvana-cli does the same from a terminal.")
# Directories 0755 and files 0644 in the control archive too, as dpkg-deb wants them.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The libraries the programs link come from dpkg-shlibdeps (Qt 6, libvips, Exiv2, TurboJPEG,
# libzip ...). What it cannot see is listed here: the programs Orvana runs (ExifTool writes tags,
# GPSBabel reads foreign track logs, xdg-open hands files to the desktop), the Qt plug-ins it
# loads (the X11 and Wayland platforms, SVG icons), Leaflet for map pages and the embedded
# browser's own process and data, which the map dialogs start.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "libimage-exiftool-perl, gpsbabel, xdg-utils, qt6-qpa-plugins, libqt6svg6, libjs-leaflet, libqt6webenginecore6-bin, libqt6webengine6-data, libvips-tools, xdg-user-dirs")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")

include(CPack)
