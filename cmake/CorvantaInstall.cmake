# What an installation consists of. On Windows all of it lies in one folder, the program first; what others have made
# (Qt, FFmpeg, ...) is put beside it by packaging/windows/build. Elsewhere the program stands in a folder of its own with
# what it looks for beside itself, and the system's folders get a link to it and what desktops want to know.
if(WIN32)
  set(corvanta_folder .)
else()
  include(GNUInstallDirs)
  set(corvanta_folder "${CMAKE_INSTALL_LIBDIR}/corvanta")
endif()
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)

# On Windows libraries are found with the programs, elsewhere they are found as what they are.
install(TARGETS corvanta corvanta_vision_opencv ipncsdk RUNTIME DESTINATION "${corvanta_folder}" LIBRARY DESTINATION "${corvanta_folder}")
if(TARGET corvanta_webmap)
  install(TARGETS corvanta_webmap LIBRARY DESTINATION "${corvanta_folder}")
endif()
if(WIN32)
  return()
endif()

set(link "${CMAKE_CURRENT_BINARY_DIR}/packaging/corvanta")
file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/packaging")
file(RELATIVE_PATH program "/${CMAKE_INSTALL_BINDIR}" "/${corvanta_folder}/corvanta")
file(CREATE_LINK "${program}" "${link}" SYMBOLIC)
install(FILES "${link}" DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES packaging/corvanta.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES packaging/corvanta.metainfo.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES src/app/resources/corvanta.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")

include(CorvantaDebian)
