# tambo_plugin(NAME sources...): a library that the workbench loads at run time. It names no host
# library: the workbench that loads it supplies those symbols. It exports the three functions of a
# plug-in, and nothing that a template of a library may have left in it.
set(TAMBO_PLUGIN_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/plugin.exports)

function(tambo_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE Tambo::kit)
    target_link_options(${name} PRIVATE LINKER:--version-script,${TAMBO_PLUGIN_EXPORTS})
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LINK_DEPENDS ${TAMBO_PLUGIN_EXPORTS})
endfunction()
