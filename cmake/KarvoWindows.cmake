# A build for Windows by MinGW: what its libraries need beyond Debian's on Linux, and a program folder that is complete.

# libarchive is a static library here; it brings neither its packing nor the system's random numbers along.
find_library(KARVO_STATIC_ZLIB libz.a REQUIRED)
set_target_properties(LibArchive::LibArchive PROPERTIES
    INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC
    INTERFACE_LINK_LIBRARIES "${KARVO_STATIC_ZLIB};bcrypt")

# The system is called with wide text.
add_compile_definitions(UNICODE _UNICODE)

# How a program under Wine sees the folders of this computer.
if(CMAKE_CROSSCOMPILING)
    set(KARVO_ROOT_AS_SEEN Z:)
endif()

# The resource compiler knows no warnings of C++.
enable_language(RC)

# Beside the programs, so that the folder runs where it is copied to.
set(KARVO_RUNTIME_FILES)

# karvo_runtime(FILE [FOLDER]): copies FILE into the program folder, or into FOLDER in it. Debian's libraries of the compiler
# carry debug information, which is twenty times the rest of them.
function(karvo_runtime file)
    cmake_path(APPEND KARVO_PROGRAM_FOLDER ${ARGN} OUTPUT_VARIABLE folder)
    cmake_path(GET file FILENAME name)
    set(copy ${CMAKE_COMMAND} -E copy ${file} ${folder}/${name})
    if(name MATCHES "\\.dll$")
        set(copy ${CMAKE_STRIP} -o ${folder}/${name} ${file})
    endif()
    add_custom_command(OUTPUT ${folder}/${name}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${copy}
        DEPENDS ${file}
        COMMENT "Copying ${name}"
        VERBATIM)
    set(KARVO_RUNTIME_FILES ${KARVO_RUNTIME_FILES} ${folder}/${name} PARENT_SCOPE)
endfunction()

foreach(library libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(IS_ABSOLUTE file wasFound)
    if(NOT wasFound)
        message(FATAL_ERROR "${library}.dll of the compiler was not found")
    endif()
    karvo_runtime(${file})
endforeach()
foreach(module Core Gui Network PrintSupport Widgets)
    karvo_runtime(${KARVO_WINDOWS_SYSROOT}/bin/Qt6${module}.dll)
endforeach()
karvo_runtime(${KARVO_WINDOWS_SYSROOT}/plugins/platforms/qwindows.dll platforms)
karvo_runtime(${KARVO_WINDOWS_SYSROOT}/plugins/styles/qwindowsvistastyle.dll styles)
karvo_runtime(${KARVO_WINDOWS_SYSROOT}/plugins/imageformats/qico.dll imageformats)
karvo_runtime(${KARVO_WINDOWS_SYSROOT}/plugins/tls/qschannelbackend.dll tls)
foreach(language de en es fr nl)
    karvo_runtime(/usr/share/qt6/translations/qtbase_${language}.qm translations)
endforeach()
if(KARVO_BUILD_TESTS)
    karvo_runtime(${KARVO_WINDOWS_SYSROOT}/bin/Qt6Test.dll)
    karvo_runtime(${KARVO_WINDOWS_SYSROOT}/plugins/platforms/qoffscreen.dll platforms)
endif()
add_custom_target(karvo_runtime ALL DEPENDS ${KARVO_RUNTIME_FILES})

# karvo_resources(NAME): gives the program NAME its version and its manifest.
function(karvo_resources name)
    set(KARVO_MANIFEST ${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest)
    set(KARVO_DESCRIPTION "Karvo")
    if(NOT name STREQUAL karvo)
        set(KARVO_DESCRIPTION "Karvo, command line")
    endif()
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${KARVO_MANIFEST})
    target_sources(${name} PRIVATE ${resources})
endfunction()
