# What an installation consists of. On Windows all of it lies in one folder, the program first; what others have made
# (Qt, FFmpeg, ...) is put beside it by packaging/windows/build.
if(WIN32)
  install(TARGETS corvanta ipncsdk RUNTIME DESTINATION .)
  if(TARGET corvanta_webmap)
    install(TARGETS corvanta_webmap LIBRARY DESTINATION .)
  endif()
endif()
