# The modules of OpenCV as targets, each by itself: OpenCV's own configuration wants modules that nothing here uses, and
# those for reading pictures and videos load some 140 libraries.
find_path(OPENCV_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4 REQUIRED)

# corvanta_opencv(NAME [OPTIONAL]): the target OpenCV::NAME. Without OPTIONAL the module has to be there.
function(corvanta_opencv module)
  # On Windows a library's name ends with its version.
  find_library(OPENCV_${module}_LIBRARY NAMES opencv_${module} opencv_${module}4 opencv_${module}460)
  if(OPENCV_${module}_LIBRARY)
    add_library(OpenCV::${module} INTERFACE IMPORTED GLOBAL)
    set_target_properties(OpenCV::${module} PROPERTIES
      INTERFACE_LINK_LIBRARIES "${OPENCV_${module}_LIBRARY}"
      INTERFACE_INCLUDE_DIRECTORIES "${OPENCV_INCLUDE_DIR}")
  elseif(NOT "OPTIONAL" IN_LIST ARGN)
    message(FATAL_ERROR "OpenCV's module ${module} was not found")
  endif()
endfunction()

foreach(module core imgproc calib3d)
  corvanta_opencv(${module})
endforeach()
