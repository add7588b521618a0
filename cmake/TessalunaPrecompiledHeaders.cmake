# Headers that the compiler reads once for many targets instead of once per source, which takes nearly half of a library's
# compile time. None of them is the project's own, because an edit would compile everything again.
set(TESSALUNA_STANDARD_HEADERS
    <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <optional> <span> <string> <string_view> <utility>
    <variant> <vector>)
set(TESSALUNA_QT_HEADERS <QAccessible> <QApplication> <QImage> <QPainter> <QPointer> <QScreen> <QTimer> <QWidget> <QWindow>)

# tessaluna_precompiled_headers(NAME HEADERS header... [LINKS target...] [SOURCES file...]): a target for
# target_precompile_headers(... REUSE_FROM). A target that reuses it may have more definitions but must have all of its definitions,
# because compilers refuse headers that were read with others.
function(tessaluna_precompiled_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINKS;SOURCES")
  if(NOT arg_SOURCES)
    set(arg_SOURCES "${PROJECT_BINARY_DIR}/nothing.cpp")
    file(CONFIGURE OUTPUT "${arg_SOURCES}" CONTENT "")
  endif()
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC tessaluna_build_flags ${arg_LINKS})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
  # g++ takes options of this kind from the precompiled header instead of the command.
  target_compile_options(${name} PRIVATE
                         $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-fno-tree-slp-vectorize>)
endfunction()

tessaluna_precompiled_headers(tessaluna_headers HEADERS ${TESSALUNA_STANDARD_HEADERS})
if(TESSALUNA_QT)
  tessaluna_precompiled_headers(tessaluna_qt_headers LINKS Qt6::Widgets HEADERS ${TESSALUNA_STANDARD_HEADERS} ${TESSALUNA_QT_HEADERS})
endif()
