# The build tree is laid out like an installation, so that the workbench starts from either. It looks for
# what it needs beside itself, so that an installation can be moved, but nothing in it.
foreach(place BINDIR=bin INCLUDEDIR=include DATADIR=share DATAROOTDIR=share MANDIR=share/man)
    string(REGEX MATCH "(.*)=(.*)" all ${place})
    set(name CMAKE_INSTALL_${CMAKE_MATCH_1})
    if(NOT "${${name}}" STREQUAL "" AND NOT "${${name}}" STREQUAL "${CMAKE_MATCH_2}")
        message(FATAL_ERROR "${name} is ${${name}}, and Tambo can be installed with ${CMAKE_MATCH_2} alone; "
                            "CMAKE_INSTALL_PREFIX may be any folder.")
    endif()
endforeach()
# Distributions set this for libraries that others link, and there is none of these here.
if(NOT "${CMAKE_INSTALL_LIBDIR}" MATCHES "^(lib)?$")
    message(STATUS "Nothing goes into CMAKE_INSTALL_LIBDIR (${CMAKE_INSTALL_LIBDIR}): "
                   "the libraries of Tambo are for itself alone, and lie in lib/tambo.")
endif()
# What the program is started with or opens when it needs it, and what it looks through.
set(TAMBO_LIBRARY_DIR lib/tambo/parts)
set(TAMBO_PLUGIN_DIR lib/tambo/plugins)
set(TAMBO_SHARE_DIR share/tambo)
set(TAMBO_SHARED_ENTRIES icons colormaps scales help families defaults.ini)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR})
foreach(entry IN LISTS TAMBO_SHARED_ENTRIES)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/share/${entry}
         ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR}/${entry} SYMBOLIC)
endforeach()
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/CHANGELOG.md
     ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR}/CHANGELOG.md SYMBOLIC)
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/examples
     ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR}/examples SYMBOLIC)
