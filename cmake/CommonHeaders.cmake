# Headers of libraries that most sources include are compiled once and taken by all, in the builds that
# compile the sources of a folder together: reading them takes a third of the time of compiling. Only
# libraries' headers stand here, never our own. The preset dev has none of it, and shows what a source
# lacks.

if(CMAKE_UNITY_BUILD)
    set(TAMBO_COMMON_HEADERS ON)
endif()
# Without the header's own name, in which a compiler cache does not know the build's folder.
if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -Xclang -include-pch -Xclang <PCH_FILE>)
endif()

# tambo_common_headers(name KIND library|program FLAGS target [COMPILER id] [LIBRARIES ...] HEADERS ...)
function(tambo_common_headers name)
    cmake_parse_arguments(arg "" "KIND;FLAGS;COMPILER" "LIBRARIES;HEADERS" ${ARGN})
    set(source ${PROJECT_BINARY_DIR}/headers/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "int main() { return 0; }\n")
    # What is compiled takes them only when it is to be position independent in the same way.
    if(arg_KIND STREQUAL program)
        add_executable(${name} EXCLUDE_FROM_ALL ${source})
    else()
        add_library(${name} OBJECT EXCLUDE_FROM_ALL ${source})
    endif()
    set_target_properties(${name} PROPERTIES AUTOMOC OFF UNITY_BUILD OFF)
    target_link_libraries(${name} PRIVATE ${arg_FLAGS} ${arg_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    # A compiler cache knows the compiled headers by this text, since they themselves differ from build
    # to build. The headers change with their packages alone.
    if(NOT arg_COMPILER)
        set(arg_COMPILER ${CMAKE_CXX_COMPILER_VERSION})
    endif()
    string(SHA256 sum "${arg_COMPILER} ${Qt6_VERSION} ${GTest_VERSION} ${arg_HEADERS}")
    file(CONFIGURE CONTENT "${sum}\n"
         OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${name}.dir/cmake_pch.hxx${CMAKE_PCH_EXTENSION}.sum)
    # Those of clang name the folder that they were made in, and are made in no time.
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        set_target_properties(${name} PROPERTIES CXX_COMPILER_LAUNCHER "")
    endif()
endfunction()

# The target takes them.
function(tambo_take_common_headers target name)
    if(TAMBO_COMMON_HEADERS)
        target_precompile_headers(${target} REUSE_FROM ${name})
        # Has next to nothing in it.
        set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp
            PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    endif()
endfunction()

if(TAMBO_COMMON_HEADERS)
    set(plain_headers <algorithm> <array> <cmath> <cstddef> <cstdint> <functional> <map> <memory>
        <optional> <set> <string> <string_view> <unordered_map> <utility> <variant> <vector>)
    tambo_common_headers(product_plain_headers KIND library FLAGS Tambo::flags HEADERS ${plain_headers})
    tambo_common_headers(product_core_headers KIND library FLAGS Tambo::flags HEADERS ${plain_headers})
    tambo_flags_of_core(product_core_headers)
    tambo_common_headers(product_toolkit_headers KIND library FLAGS Tambo::flags LIBRARIES Qt6::Widgets
        HEADERS ${plain_headers} <filesystem> <QtWidgets>)
    tambo_compile_quickly(product_toolkit_headers)
endif()
