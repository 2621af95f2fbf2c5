# tambo_plugin(NAME sources... [TITLE text] [ROLE tool|alignments|background] [ICON file] [HELP page files...]
#              [SETTINGS file] [COMMANDS "word = what it does"...])
# A library that the workbench loads at run time, with its descriptor beside it. It names no host
# library: the workbench that loads it supplies those symbols. It exports the three functions of a
# plug-in, and nothing that a template of a library may have left in it. Signals and slots of its own
# need nothing more (AUTOMOC). Installing puts it where the workbench of the same prefix looks.
#
# ICON is a file, or the name of an icon of the workbench. HELP is an HTML page, with the pictures and
# pages that it leads to behind it. SETTINGS is a file of default settings, in the form of tambo.ini.
function(tambo_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TITLE;ROLE;ICON;SETTINGS" "HELP;COMMANDS")
    add_library(${name} MODULE ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE Tambo::kit)
    tambo_plugin_exports(${name})
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        AUTOMOC ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    # In the workbench's own tree: where the program of that tree looks.
    if(TAMBO_PLUGIN_DIR)
        set_target_properties(${name} PROPERTIES
            LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${TAMBO_PLUGIN_DIR})
    endif()
    tambo_write_descriptor(${name} ${name})
    install(TARGETS ${name} LIBRARY DESTINATION lib/tambo/plugins)
endfunction()

# The library exports the three functions alone. Those of C++, without extern "C", are of no use; the
# workbench can say so when it finds them.
function(tambo_plugin_exports target)
    set(exports ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/plugin.exports)
    target_link_options(${target} PRIVATE LINKER:--version-script,${exports})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
endfunction()

# Writes STEM.plugin beside the library, and puts icon and help pages into the folder NAME beside it,
# where those of several plug-ins do not meet; and has all of them installed. Arguments as above, and
# COMPONENT of the installation.
function(tambo_plugin_descriptor target stem)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "TITLE;ROLE;ICON;SETTINGS;COMPONENT" "HELP;COMMANDS")
    if(arg_COMPONENT STREQUAL workbench)
        set_property(GLOBAL APPEND PROPERTY TAMBO_OWN_PLUGINS ${target})
    endif()
    tambo_write_descriptor(${target} ${stem})
endfunction()

# The same, of the arguments that the caller has parsed: passed on, they would be parted at ";".
function(tambo_write_descriptor target stem)
    get_property(kit GLOBAL PROPERTY TAMBO_KIT_VERSION)
    set(text "[Plugin]\nKit = ${kit}\nName = ${target}\n")
    set(files)
    if(arg_TITLE)
        string(APPEND text "Title = ${arg_TITLE}\n")
    endif()
    if(arg_ROLE)
        string(APPEND text "Role = ${arg_ROLE}\n")
    endif()
    if(arg_ICON)
        get_filename_component(file ${arg_ICON} ABSOLUTE)
        if(EXISTS ${file})
            list(APPEND files ${file})
            get_filename_component(file ${file} NAME)
            string(APPEND text "Icon = ${target}/${file}\n")
        else()
            string(APPEND text "Icon = ${arg_ICON}\n")
        endif()
    endif()
    if(arg_HELP)
        foreach(page IN LISTS arg_HELP)
            get_filename_component(file ${page} ABSOLUTE)
            list(APPEND files ${file})
        endforeach()
        list(GET arg_HELP 0 page)
        get_filename_component(page ${page} NAME)
        string(APPEND text "Help = ${target}/${page}\n")
    endif()
    if(arg_COMMANDS)
        set(words)
        set(lines)
        foreach(command IN LISTS arg_COMMANDS)
            string(REGEX MATCH "^[^= ]+" word "${command}")
            list(APPEND words ${word})
            if(command MATCHES "=")
                string(APPEND lines "${command}\n")
            endif()
        endforeach()
        list(JOIN words ", " words)
        string(APPEND text "Commands = ${words}\n")
        if(lines)
            string(APPEND text "\n[Commands]\n${lines}")
        endif()
    endif()
    if(arg_SETTINGS)
        get_filename_component(file ${arg_SETTINGS} ABSOLUTE)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
        file(READ ${file} settings)
        string(APPEND text "\n${settings}")
    endif()
    file(GENERATE OUTPUT $<TARGET_FILE_DIR:${target}>/${stem}.plugin CONTENT "${text}")
    set(component)
    if(arg_COMPONENT)
        set(component COMPONENT ${arg_COMPONENT})
    endif()
    install(FILES $<TARGET_FILE_DIR:${target}>/${stem}.plugin DESTINATION lib/tambo/plugins ${component})
    if(files)
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E make_directory $<TARGET_FILE_DIR:${target}>/${target}
            COMMAND ${CMAKE_COMMAND} -E copy_if_different ${files} $<TARGET_FILE_DIR:${target}>/${target}
            VERBATIM)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${files})
        install(FILES ${files} DESTINATION lib/tambo/plugins/${target} ${component})
    endif()
endfunction()
