# The build tree is laid out like an installation, so that the workbench starts from either.
set(TAMBO_LIBRARY_DIR lib/tambo)
set(TAMBO_PLUGIN_DIR ${TAMBO_LIBRARY_DIR}/plugins)
set(TAMBO_SHARE_DIR share/tambo)
set(TAMBO_SHARED_ENTRIES icons colormaps scales help defaults.ini)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR})
foreach(entry IN LISTS TAMBO_SHARED_ENTRIES)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/share/${entry}
         ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR}/${entry} SYMBOLIC)
endforeach()
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/examples
     ${CMAKE_BINARY_DIR}/${TAMBO_SHARE_DIR}/examples SYMBOLIC)
