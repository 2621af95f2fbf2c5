# tambo_plugin(NAME sources...): a library that the workbench loads at run time. It names no host
# library: the workbench that loads it supplies those symbols. Of its own it exports what the
# sources mark, the three functions of a plug-in.
function(tambo_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE Tambo::kit)
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()
