# The interface's languages: translations/*.ts made into what the program loads, with the toolkit's own Chinese texts
# beside them. The tool and the toolkit's texts are those of the machine that builds, also for another system.

find_program(CORVANTA_LRELEASE NAMES lrelease lrelease-qt5 HINTS "${Qt5_DIR}/../../../bin" /usr/lib/qt5/bin)
if(NOT CORVANTA_LRELEASE)
  message(FATAL_ERROR "lrelease is missing (Debian: qttools5-dev-tools, qtchooser)")
endif()
find_file(CORVANTA_QTBASE_CHINESE qtbase_zh_CN.qm
  HINTS "${Qt5_DIR}/../../../translations" /usr/share/qt5/translations NO_CMAKE_FIND_ROOT_PATH)
if(NOT CORVANTA_QTBASE_CHINESE)
  message(WARNING "qtbase_zh_CN.qm is missing: the toolkit's own dialogs will be in English (Debian: qttranslations5-l10n)")
endif()

# corvanta_add_translations(TARGET): gives it the resource "translations" (":/translations/corvanta_en.qm", ...).
function(corvanta_add_translations target)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/translations")
  file(MAKE_DIRECTORY "${folder}")
  set(source "${PROJECT_SOURCE_DIR}/translations/corvanta_en.ts")
  add_custom_command(OUTPUT "${folder}/corvanta_en.qm"
    COMMAND "${CORVANTA_LRELEASE}" -silent -nounfinished "${source}" -qm "${folder}/corvanta_en.qm"
    DEPENDS "${source}" VERBATIM)
  set(entries "<file>corvanta_en.qm</file>")
  if(CORVANTA_QTBASE_CHINESE)
    configure_file("${CORVANTA_QTBASE_CHINESE}" "${folder}/qtbase_zh_CN.qm" COPYONLY)
    string(APPEND entries "<file>qtbase_zh_CN.qm</file>")
  endif()
  file(CONFIGURE OUTPUT "${folder}/translations.qrc"
    CONTENT "<RCC><qresource prefix=\"/translations\">${entries}</qresource></RCC>\n")
  set(resource "${folder}/qrc_translations.cpp")
  add_custom_command(OUTPUT "${resource}"
    COMMAND Qt5::rcc --name translations --output "${resource}" "${folder}/translations.qrc"
    DEPENDS "${folder}/translations.qrc" "${folder}/corvanta_en.qm" VERBATIM)
  set_property(SOURCE "${resource}" PROPERTY SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE "${resource}")
endfunction()
