# libarchive, for the extraction tool and for the tests, which make archives with it.
if(WIN32)
  # One program without libraries beside it.
  find_library(LibArchive_LIBRARY NAMES libarchive_static.a REQUIRED)
  find_library(CORVIN_ZLIB NAMES libz.a REQUIRED)
endif()
find_package(LibArchive REQUIRED)
if(WIN32)
  set_property(TARGET LibArchive::LibArchive APPEND PROPERTY INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC)
  set_property(TARGET LibArchive::LibArchive APPEND PROPERTY INTERFACE_LINK_LIBRARIES ${CORVIN_ZLIB} bcrypt)
endif()
