# The rules that every target of this project is built by.

find_package(Threads REQUIRED)

find_program(CALORIVO_CCACHE ccache)
if(CALORIVO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CALORIVO_CCACHE})
endif()

add_library(calorivo_options INTERFACE)
target_compile_features(calorivo_options INTERFACE cxx_std_20)
target_include_directories(calorivo_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(
    calorivo_options
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Werror
              -Wshadow
              -Wconversion
              -Wsign-conversion
              -Wold-style-cast
              -Wcast-qual
              -Wformat=2
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Wimplicit-fallthrough)
# g++ 12 warns, with optimisation, of overlapping copies inside std::string's own operator+ that never overlap.
target_compile_options(calorivo_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
set_property(GLOBAL PROPERTY USE_FOLDERS ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(CALORIVO_MOLD mold)
if(CALORIVO_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

if(CALORIVO_SANITIZE)
    target_compile_options(calorivo_options INTERFACE -fsanitize=${CALORIVO_SANITIZE} -fno-sanitize-recover=all
                                                      -fno-omit-frame-pointer)
    target_link_options(calorivo_options INTERFACE -fsanitize=${CALORIVO_SANITIZE})
endif()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(calorivo_options INTERFACE -ffunction-sections -fdata-sections)
    target_link_options(calorivo_options INTERFACE -Wl,--gc-sections -Wl,--as-needed)
endif()

# Headers that nearly every file needs, read once a build where CALORIVO_PRECOMPILE is set: a whole build takes half of
# the time. A developer's build goes without: a file that forgets an include does not compile there. So does the code of
# a release: g++ 12 warns of the standard library's own code when the optimiser meets it in precompiled headers.
set(calorivo_headers_plain
    <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <map> <memory> <mutex> <optional> <set> <span>
    <string> <string_view> <utility> <variant> <vector>)
set(calorivo_headers_tests ${calorivo_headers_plain} <gmock/gmock.h> <gtest/gtest.h>)
set(calorivo_headers_qt ${calorivo_headers_plain} <QAction> <QApplication> <QBoxLayout> <QLabel> <QSettings> <QString>
                        <QTimer> <QVariantMap> <QWidget>)
set(calorivo_headers_qt_tests ${calorivo_headers_qt} <QSignalSpy> <QTest> <gmock/gmock.h> <gtest/gtest.h>
                              [["app/PyroluxAppDelegate.h"]] [["support/RecordingPlatform.h"]])

# calorivo_precompile(TARGET KIND [LIBRARIES...]): the target's files begin with the headers of the kind: plain, tests,
# qt or qt_tests. The first target of a kind says which libraries these headers are from.
function(calorivo_precompile target kind)
    if(NOT CALORIVO_PRECOMPILE OR (CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT kind MATCHES "tests$"))
        return()
    endif()
    set(owner calorivo_precompiled_${kind})
    if(NOT TARGET ${owner})
        file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp CONTENT "")
        add_library(${owner} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp)
        target_link_libraries(${owner} PRIVATE calorivo_options Threads::Threads ${ARGN})
        target_precompile_headers(${owner} PRIVATE ${calorivo_headers_${kind}})
        target_include_directories(${owner} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    endif()
    target_precompile_headers(${target} REUSE_FROM ${owner})
    # The compiler's cache would read these large headers again for each file, to know it: it takes longer than it saves in
    # a build of everything, and what it keeps would serve this folder only.
    set_target_properties(${target} ${owner} PROPERTIES CXX_COMPILER_LAUNCHER "")
endfunction()

# calorivo_library(FOLDER [DEPENDS OTHER-FOLDERS...]): the library of src/FOLDER, all its .cpp files, linked to the
# folders it may include. The target is named for the folder: platform/std gives calorivo_platform_std.
function(calorivo_library folder)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "DEPENDS")
    string(REPLACE "/" "_" name calorivo_${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    if(sources)
        add_library(${name} STATIC ${sources})
        set(visibility PUBLIC)
        if(NOT folder MATCHES "qt$")
            calorivo_precompile(${name} plain)
        endif()
    else()
        add_library(${name} INTERFACE)  # headers only
        set(visibility INTERFACE)
    endif()
    target_link_libraries(${name} ${visibility} calorivo_options Threads::Threads)
    foreach(other IN LISTS ARG_DEPENDS)
        string(REPLACE "/" "_" otherName calorivo_${other})
        target_link_libraries(${name} ${visibility} ${otherName})
    endforeach()
endfunction()

add_library(calorivo_qt_options INTERFACE)
target_compile_definitions(
    calorivo_qt_options
    INTERFACE QT_NO_KEYWORDS
              QT_NO_CAST_FROM_ASCII
              QT_NO_CAST_TO_ASCII
              QT_NO_URL_CAST_FROM_STRING
              QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# calorivo_qt(TARGET QT-LIBRARIES...): the target may use Qt, and its headers with Q_OBJECT are compiled for it.
function(calorivo_qt target)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "INTERFACE_LIBRARY")
        return()
    endif()
    target_link_libraries(${target} PUBLIC calorivo_qt_options ${ARGN})
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    calorivo_precompile(${target} qt calorivo_qt_options Qt6::Core Qt6::Gui Qt6::Widgets)
    get_target_property(sources ${target} SOURCES)
    set(folders "")
    foreach(source IN LISTS sources)
        get_filename_component(folder ${source} DIRECTORY)
        list(APPEND folders ${folder})
    endforeach()
    list(REMOVE_DUPLICATES folders)
    foreach(folder IN LISTS folders)
        file(GLOB headers CONFIGURE_DEPENDS ${folder}/*.h)
        target_sources(${target} PRIVATE ${headers})
        # Without this a header that is new in an old build is not seen.
        set_property(TARGET ${target} APPEND PROPERTY AUTOGEN_TARGET_DEPENDS ${headers})
    endforeach()
endfunction()

# calorivo_tests(FOLDER LIBRARIES...): the test program of tests/FOLDER, all its *Test.cpp files.
function(calorivo_tests folder)
    string(REPLACE "/" "_" name calorivo_${folder}_tests)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*Test.cpp)
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE calorivo_test_support ${ARGN} GTest::gmock_main)
    calorivo_precompile(${name} tests GTest::gmock)
    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${folder}: "
        DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "TZ=UTC;LC_ALL=C.UTF-8")
endfunction()

# calorivo_qt_tests(FOLDER LIBRARIES...): the same with an application object around the tests, on no screen.
function(calorivo_qt_tests folder)
    string(REPLACE "/" "_" name calorivo_${folder}_tests)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*Test.cpp)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.h)
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources} ${headers} ${PROJECT_SOURCE_DIR}/tests/support/QtMain.cpp)
    target_link_libraries(${name} PRIVATE calorivo_test_support ${ARGN} Qt6::Widgets Qt6::Test GTest::gmock)
    calorivo_precompile(${name} qt_tests calorivo_qt_options Qt6::Widgets Qt6::Test GTest::gmock)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${folder}: "
        DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT
                   "TZ=UTC;LC_ALL=C.UTF-8;QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
