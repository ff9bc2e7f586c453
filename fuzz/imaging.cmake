# Photo files: tags, decoding and thumbnails on arbitrary bytes. Seeded with a few real photos of
# each format and every damaged file of the corpus beside the checkout.
set(image_seeds ${CMAKE_CURRENT_BINARY_DIR}/image_seeds)
set(corpus ${CMAKE_SOURCE_DIR}/../shared/corpus)
file(MAKE_DIRECTORY ${image_seeds})
foreach(seed
    photos/exif-samples-DSCN0010.jpg photos/exiftool-GPS.jpg photos/exiv2-smiley1.jpg photos/exiv2-Reagan.jpg
    photos/exiftool-ExifTool.tif photos/exiv2-mini9.tif photos/exiv2-1343_exif.png photos/exif-samples-Kodak_CX7530.jpg
    photos/drewnoakes-FujiFilm_FinePixS1Pro_2.jpg photos/exiv2-pr_1994_poc2.jpg)
  if(EXISTS ${corpus}/${seed})
    file(COPY ${corpus}/${seed} DESTINATION ${image_seeds})
  endif()
endforeach()
file(GLOB malformed_seeds ${corpus}/photos-malformed/*)
file(COPY ${malformed_seeds} DESTINATION ${image_seeds})

orvana_add_fuzzer(fuzz_image_file
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_image_file.cpp ${ORVANA_IMAGING_SOURCES}
  LIBRARIES orvana_app Qt6::Core PkgConfig::VIPS PkgConfig::EXIV2 PkgConfig::TURBOJPEG
  SEEDS ${image_seeds})
target_include_directories(fuzz_image_file PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(fuzz_image_file PRIVATE QT_NO_KEYWORDS)
