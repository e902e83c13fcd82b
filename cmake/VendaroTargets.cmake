# One function per kind of target; every flag stands in the one interface target below.

find_program(VENDARO_CCACHE ccache)
if(VENDARO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${VENDARO_CCACHE}")
endif()

add_library(vendaro_flags INTERFACE)
target_include_directories(vendaro_flags INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_definitions(vendaro_flags INTERFACE
  QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400
  VENDARO_VERSION="${PROJECT_VERSION}")
# Money is worked out in single precision step by step: no fused operations.
target_compile_options(vendaro_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -ffp-contract=off $<$<BOOL:${VENDARO_WERROR}>:-Werror>)
# GCC 12 sees overlong copies in std::string where there are none, once it inlines.
target_compile_options(vendaro_flags INTERFACE $<$<CONFIG:Release>:-Wno-stringop-overflow> $<$<CONFIG:Release>:-Wno-restrict>)
if(VENDARO_SANITIZE)
  target_compile_options(vendaro_flags INTERFACE -fsanitize=${VENDARO_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(vendaro_flags INTERFACE -fsanitize=${VENDARO_SANITIZE})
endif()

# A database is hundreds of thousands of small objects, made at once and given up at once; the sanitizers have allocators of their own.
add_library(vendaro_allocator INTERFACE)
if(NOT VENDARO_SANITIZE)
  find_library(VENDARO_TCMALLOC tcmalloc_minimal REQUIRED)
  target_link_libraries(vendaro_allocator INTERFACE "${VENDARO_TCMALLOC}")
endif()

# vendaro_library(<folder> LINK <targets...> [MOC])
# Makes vendaro_<folder> from every source below src/<folder>.
function(vendaro_library folder)
  cmake_parse_arguments(ARG "MOC" "" "LINK;PCH" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp" "${PROJECT_SOURCE_DIR}/src/${folder}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$|/ui/kit/")
  set(hasSources ${sources})
  list(FILTER hasSources INCLUDE REGEX "\\.cpp$")
  if(NOT hasSources)
    add_library(vendaro_${folder} INTERFACE)
    target_link_libraries(vendaro_${folder} INTERFACE vendaro_flags ${ARG_LINK})
    return()
  endif()
  add_library(vendaro_${folder} STATIC ${sources})
  target_link_libraries(vendaro_${folder} PUBLIC vendaro_flags ${ARG_LINK})
  if(ARG_MOC)
    set_target_properties(vendaro_${folder} PROPERTIES AUTOMOC ON)
  endif()
  if(VENDARO_PCH AND ARG_PCH)
    target_precompile_headers(vendaro_${folder} PRIVATE ${ARG_PCH})
  endif()
  if(VENDARO_UNITY)
    set_target_properties(vendaro_${folder} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  endif()
endfunction()

# A test runs once or twice: quick to compile counts for more than quick to run.
function(vendaro_quick_to_compile target)
  target_compile_options(${target} PRIVATE -O0)
  if(VENDARO_PCH)
    target_precompile_headers(${target} PRIVATE
      <gmock/gmock.h> <gtest/gtest.h> <functional> <map> <memory> <string> <vector> <QDateTime> <QHash> <QString> <QStringList>)
  endif()
endfunction()

# vendaro_test(<folder> LINK <targets...> [MOC])
# Makes tst_<folder> from every source below tests/<folder>; skipped while there is none.
function(vendaro_test folder)
  cmake_parse_arguments(ARG "MOC" "" "LINK;ENVIRONMENT" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/ui/kit/")
  if(NOT sources)
    return()
  endif()
  add_executable(tst_${folder} ${sources})
  target_link_libraries(tst_${folder} PRIVATE vendaro_test_support ${ARG_LINK} GTest::gmock)
  target_compile_definitions(tst_${folder} PRIVATE TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests")
  vendaro_quick_to_compile(tst_${folder})
  if(ARG_MOC)
    set_target_properties(tst_${folder} PROPERTIES AUTOMOC ON)
  endif()
  gtest_discover_tests(tst_${folder} DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 300 LABELS "${folder}"
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC;${ARG_ENVIRONMENT}")
endfunction()
