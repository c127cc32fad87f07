# The rooms' targets: each room's logic is a static library, its forms another. A room links only the rooms it may know.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(KARVO_PROGRAM_FOLDER ${CMAKE_BINARY_DIR}/program)

add_library(karvo_options INTERFACE)
if(MSVC)
    target_compile_options(karvo_options INTERFACE /utf-8 /W4 /permissive-)
else()
    target_compile_options(karvo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                   -Wnon-virtual-dtor -Woverloaded-virtual)
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # When it optimises, GCC 12 takes u"a" + f() for a copy onto itself; nothing here says "restrict".
        target_compile_options(karvo_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:-Wno-restrict>)
    endif()
endif()
if(KARVO_WARNINGS_AS_ERRORS)
    target_compile_options(karvo_options INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
if(KARVO_SANITIZERS)
    add_compile_options(-fsanitize=${KARVO_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KARVO_SANITIZERS})
endif()

# What Qt code is held to: no silent conversions from narrow strings, none that lose bits in connections.
add_library(karvo_qt_options INTERFACE)
target_compile_definitions(karvo_qt_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                                                      QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH)
target_link_libraries(karvo_qt_options INTERFACE karvo_options)

# karvo_room(NAME SOURCES... KNOWS...): a room of plain logic, standard library only.
function(karvo_room name)
    cmake_parse_arguments(ROOM "" "" "SOURCES;KNOWS" ${ARGN})
    add_library(karvo_${name} STATIC ${ROOM_SOURCES})
    target_include_directories(karvo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    list(TRANSFORM ROOM_KNOWS PREPEND karvo_)
    target_link_libraries(karvo_${name} PUBLIC ${ROOM_KNOWS} PRIVATE karvo_options)
    target_precompile_headers(karvo_${name} PRIVATE <algorithm> <array> <chrono> <cstdint> <filesystem> <functional>
                              <optional> <span> <string> <string_view> <vector>)
endfunction()

# karvo_qt_room(NAME SOURCES... KNOWS... QT...): a room that stands on Qt; QT names the Qt modules it may use.
function(karvo_qt_room name)
    cmake_parse_arguments(ROOM "" "" "SOURCES;KNOWS;QT" ${ARGN})
    add_library(karvo_${name} STATIC ${ROOM_SOURCES})
    set_target_properties(karvo_${name} PROPERTIES AUTOMOC ON)
    target_include_directories(karvo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    list(TRANSFORM ROOM_KNOWS PREPEND karvo_)
    list(TRANSFORM ROOM_QT PREPEND Qt6::)
    target_link_libraries(karvo_${name} PUBLIC ${ROOM_KNOWS} ${ROOM_QT} PRIVATE karvo_qt_options)
    if("Qt6::Widgets" IN_LIST ROOM_QT)
        target_precompile_headers(karvo_${name} PRIVATE <QtWidgets> <functional> <optional> <string> <vector>)
    else()
        target_precompile_headers(karvo_${name} PRIVATE <QtCore> <functional> <optional> <string> <vector>)
    endif()
endfunction()

# karvo_program(NAME SOURCES... KNOWS...): an executable in the program folder.
function(karvo_program name)
    cmake_parse_arguments(PROGRAM "" "" "SOURCES;KNOWS" ${ARGN})
    add_executable(${name} ${PROGRAM_SOURCES})
    list(TRANSFORM PROGRAM_KNOWS PREPEND karvo_)
    target_link_libraries(${name} PRIVATE ${PROGRAM_KNOWS} karvo_options)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${KARVO_PROGRAM_FOLDER})
    target_compile_definitions(${name} PRIVATE KARVO_VERSION="${PROJECT_VERSION}")
    if(WIN32)
        karvo_resources(${name})
    endif()
endfunction()

# karvo_test(NAME SOURCES... KNOWS...): a room's tests as one executable and one process, since starting a program for each
# case takes longer than most cases. When it crashes, its last "[ RUN" line names the case.
function(karvo_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;KNOWS;QT" ${ARGN})
    add_executable(${name}_tests ${TEST_SOURCES})
    list(TRANSFORM TEST_KNOWS PREPEND karvo_)
    list(TRANSFORM TEST_QT PREPEND Qt6::)
    target_include_directories(${name}_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name}_tests PRIVATE ${TEST_KNOWS} ${TEST_QT} karvo_options GTest::gtest)
    target_compile_definitions(${name}_tests PRIVATE
        KARVO_PROGRAM_FOLDER="${KARVO_ROOT_AS_SEEN}${KARVO_PROGRAM_FOLDER}"
        KARVO_SOURCE_FOLDER="${KARVO_ROOT_AS_SEEN}${CMAKE_SOURCE_DIR}")
    if(NOT TEST_QT)
        target_link_libraries(${name}_tests PRIVATE GTest::gtest_main)
    endif()
    target_precompile_headers(${name}_tests PRIVATE <gtest/gtest.h> <functional> <optional> <string> <vector>)
    add_test(NAME ${name} COMMAND ${name}_tests)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
