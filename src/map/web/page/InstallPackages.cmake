# Installs what package-lock.json names below TO: cmake -DNPM= -DFROM= -DTO= -DSTAMP= -P InstallPackages.cmake
file(MAKE_DIRECTORY "${TO}")
foreach(file package.json package-lock.json .npmrc)
  configure_file("${FROM}/${file}" "${TO}/${file}" COPYONLY)
endforeach()
execute_process(
  COMMAND "${NPM}" ci --omit=dev --ignore-scripts --no-audit --no-fund
  WORKING_DIRECTORY "${TO}"
  OUTPUT_VARIABLE said
  ERROR_VARIABLE said
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "'npm ci' could not install the packages of the map's page (${result}). It needs the npm registry "
                      "once; without it, leave the online map out with -DCORVANTA_WEBMAP=OFF. npm said:\n${said}")
endif()
file(TOUCH "${STAMP}")
