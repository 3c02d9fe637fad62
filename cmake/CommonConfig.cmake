# One interface target carries the language standard, the warnings, the hardening and the strict
# defines; every target of the project links it (vantorel_add_library does so for libraries).

add_library(vantorel_common INTERFACE)
target_compile_features(vantorel_common INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

target_compile_options(vantorel_common INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough
  $<$<BOOL:${VANTOREL_WERROR}>:-Werror>
  -fstack-protector-strong)
target_link_options(vantorel_common INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
target_compile_definitions(vantorel_common INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_FOREACH QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(VANTOREL_SANITIZE)
  # A target with the property VANTOREL_PLAIN is only linked with the sanitizers.
  target_compile_options(vantorel_common INTERFACE
    $<$<NOT:$<BOOL:$<TARGET_PROPERTY:VANTOREL_PLAIN>>>:-fsanitize=${VANTOREL_SANITIZE}>
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(vantorel_common INTERFACE -fsanitize=${VANTOREL_SANITIZE})
else()
  # FORTIFY needs optimisation and does not go together with the sanitizers' interceptors.
  target_compile_options(vantorel_common INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

# The libraries' shared precompiled headers: what nearly every file includes, without and with
# pictures.
set(VANTOREL_PCH <QByteArray> <QString> <QThread> <atomic> <functional> <memory> <vector>)
set(VANTOREL_GUI_PCH ${VANTOREL_PCH} <QApplication> <QPainter> <QWidget>)

# vantorel_add_library(<name> [GUI] SOURCES <file>... LINKS <library>...)
#   GUI: shows something, so it gets Qt's meta-object compiler and the headers with pictures.
function(vantorel_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GUI" "" "SOURCES;LINKS")
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC vantorel_common ${arg_LINKS})
  if(arg_GUI)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  if(name STREQUAL vantorel_platform)
    target_precompile_headers(${name} PRIVATE ${VANTOREL_PCH})
  elseif(NOT arg_GUI)
    target_precompile_headers(${name} REUSE_FROM vantorel_platform)
  elseif(name STREQUAL vantorel_ui_theme)
    target_precompile_headers(${name} PRIVATE ${VANTOREL_GUI_PCH})
  else()
    target_precompile_headers(${name} REUSE_FROM vantorel_ui_theme)
  endif()
endfunction()
