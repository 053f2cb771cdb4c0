# The Debian package, made by packaging/debian/build. It has no scripts of its own: what it brings is removed by the
# package manager, and data lie with the users.
find_program(CORVANTA_DPKG dpkg)
find_program(CORVANTA_GZIP gzip)
if(NOT CORVANTA_DPKG OR NOT CORVANTA_GZIP)
  return()
endif()

# corvanta_packed(FILE TO): a file of packaging/debian with this version in it, compressed as Debian wants it.
function(corvanta_packed file to)
  set(filled "${CMAKE_CURRENT_BINARY_DIR}/packaging/${file}")
  configure_file("packaging/debian/${file}.in" "${filled}" @ONLY)
  execute_process(COMMAND "${CORVANTA_GZIP}" -9nc "${filled}" OUTPUT_FILE "${filled}.gz" COMMAND_ERROR_IS_FATAL ANY)
  install(FILES "${filled}.gz" DESTINATION "${to}")
endfunction()

set(CORVANTA_MAINTAINER "Corvanta maintainers <maintainers@corvanta.invalid>" CACHE STRING
    "Who looks after the Debian package, as NAME <ADDRESS>")
corvanta_packed(changelog "${CMAKE_INSTALL_DATADIR}/doc/corvanta")
corvanta_packed(corvanta.1 "${CMAKE_INSTALL_DATADIR}/man/man1")
install(FILES packaging/debian/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/corvanta")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvanta)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${CORVANTA_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "client for watching, recording and measuring with networked devices")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Live cameras in a grid of up to 64 tiles, playback, recording, sensors with
charts and alarms, maps, and measuring with cameras.
.
An embedded device service comes with it, so that the whole system runs on one
machine: cameras by RTSP and ONVIF, sensors by Modbus, GPIO and MQTT.
.
All data lie in the user's own folder.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# What is linked says dpkg-shlibdeps; these are loaded while it runs: the database driver, sound, fonts for pictures and
# windows.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt5sql5-sqlite, libqt5multimedia5-plugins, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gstreamer1.0-pulseaudio, libsecret-1-0, libgl1-mesa-dri")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gstreamer1.0-libav, gnome-keyring")
include(CPack)
