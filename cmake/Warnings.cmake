# What every target of the project is compiled with; linked privately, so none of it leaks out.
add_library(tambo_flags INTERFACE)
add_library(Tambo::flags ALIAS tambo_flags)
target_compile_options(tambo_flags INTERFACE -Wall -Wextra -Wpedantic
                                             $<$<BOOL:${TAMBO_WERROR}>:-Werror>)
target_compile_definitions(tambo_flags INTERFACE QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# GCC 12 sees overlapping copies in every optimised "text" + std::string (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tambo_flags INTERFACE -Wno-restrict)
endif()
if(TAMBO_SANITIZE)
    target_compile_options(tambo_flags INTERFACE -fsanitize=address,undefined
                                                 -fno-sanitize-recover=undefined
                                                 -fno-omit-frame-pointer)
    target_link_options(tambo_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TAMBO_COVERAGE)
    target_compile_options(tambo_flags INTERFACE --coverage)
    target_link_options(tambo_flags INTERFACE --coverage)
endif()

set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
# Between optimised and debuggable: enough of both for a run of all tests under the sanitizers.
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1")
