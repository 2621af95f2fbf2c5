# tambo_room(name SOURCES ... [LIBRARIES ...] [PRIVATE ...]): a folder inside a larger part. Its
# headers are seen only by those who name it in LIBRARIES (which hand on what they see themselves) or
# in PRIVATE, so that an arrow in the wrong direction does not compile.
function(tambo_room name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES;PRIVATE" ${ARGN})
    add_library(${name} OBJECT ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LIBRARIES} PRIVATE Tambo::flags ${arg_PRIVATE})
    # Where the toolkit's compiler of signals and slots is off, so is the toolkit.
    if(TAMBO_IN_CORE)
        tambo_flags_of_core(${name})
        tambo_take_common_headers(${name} product_core_headers)
    elseif(CMAKE_AUTOMOC)
        tambo_compile_quickly(${name})
        tambo_take_common_headers(${name} product_toolkit_headers)
    else()
        tambo_take_common_headers(${name} product_plain_headers)
    endif()
endfunction()

# tambo_part(name ALIAS Tambo::x ROOMS ... [SOURCES ...] [LIBRARIES ...] [PRIVATE ...]): a library of
# all its rooms, and of what stands above them in the folder itself. The objects of all are noted for
# the program, whose plug-ins may use any of them, or, where TAMBO_IN_CORE is set, for the library that the
# program shares with others.
function(tambo_part name)
    cmake_parse_arguments(arg "" "ALIAS" "ROOMS;SOURCES;LIBRARIES;PRIVATE" ${ARGN})
    set(objects)
    foreach(room IN LISTS arg_ROOMS)
        list(APPEND objects $<TARGET_OBJECTS:${room}>)
    endforeach()
    add_library(${name} STATIC ${arg_SOURCES} ${objects})
    add_library(${arg_ALIAS} ALIAS ${name})
    if(arg_SOURCES)
        target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
        list(APPEND objects $<TARGET_OBJECTS:${name}>)
    endif()
    set(user PROGRAM)
    if(TAMBO_IN_CORE)
        tambo_flags_of_core(${name})
        set(user CORE)
    endif()
    # What rooms ask of those who use them, without their objects, which are in the archive.
    foreach(room IN LISTS arg_ROOMS)
        target_include_directories(${name} PUBLIC $<TARGET_PROPERTY:${room},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
    target_link_libraries(${name} PUBLIC ${arg_LIBRARIES} PRIVATE Tambo::flags ${arg_PRIVATE})
    set_property(GLOBAL APPEND PROPERTY TAMBO_${user}_OBJECTS ${objects})
    # For whoever compiles all of it in another way.
    set_target_properties(${name} PROPERTIES ROOMS "${arg_ROOMS}")
endfunction()
