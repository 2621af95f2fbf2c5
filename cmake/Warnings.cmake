# What every target of the project is compiled with; linked privately, so none of it leaks out.
add_library(tambo_warnings INTERFACE)
add_library(tambo_flags INTERFACE)
add_library(Tambo::flags ALIAS tambo_flags)
target_link_libraries(tambo_flags INTERFACE tambo_warnings)
target_compile_options(tambo_warnings INTERFACE -Wall -Wextra -Wpedantic
                                             $<$<BOOL:${TAMBO_WERROR}>:-Werror>)
target_compile_definitions(tambo_warnings INTERFACE QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# GCC 12 sees overlapping copies in every optimised "text" + std::string (its bug 105651). clang, where
# it compiles a test in a build of GCC, has no such warning.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tambo_warnings INTERFACE
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:BY_TEST_COMPILER>>>:-Wno-restrict>)
endif()
if(TAMBO_SANITIZE)
    # A null pointer ends the program at once and with a report in any case, and no processor that this
    # runs on minds how data is aligned; without a check of both in front of every access, compiling
    # takes a fifth less time. What the fuzzer runs has them.
    target_compile_options(tambo_flags INTERFACE -fsanitize=address,undefined
                                                 -fno-sanitize=null,alignment
                                                 -fno-sanitize-recover=undefined
                                                 -fno-omit-frame-pointer)
    # Next to all the programs are tests, which are linked in a third of the time so.
    target_link_options(tambo_flags INTERFACE -fsanitize=address,undefined -fuse-ld=lld)
endif()
# The sources of tests. They are most of what there is to compile, and neither their speed nor their
# own instrumentation is of use: the program that they run has both.
add_library(tambo_test_flags INTERFACE)
add_library(Tambo::test_flags ALIAS tambo_test_flags)
target_link_libraries(tambo_test_flags INTERFACE tambo_warnings)
target_compile_options(tambo_test_flags INTERFACE -O0)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT TAMBO_TEST_COMPILER)
    # Collecting what the compiler does not need any more takes a tenth of its time, and it needs no more
    # than a gigabyte without.
    target_compile_options(tambo_test_flags INTERFACE --param=ggc-min-expand=400 --param=ggc-min-heapsize=1000000)
endif()
if(TAMBO_SANITIZE)
    target_link_options(tambo_test_flags INTERFACE -fsanitize=address,undefined -fuse-ld=lld)
endif()
if(TAMBO_COVERAGE)
    target_link_options(tambo_test_flags INTERFACE --coverage)
    target_compile_options(tambo_flags INTERFACE --coverage)
    target_link_options(tambo_flags INTERFACE --coverage)
endif()

# What users run reads files from anywhere: a copy that is too long, or a return to where nobody called
# from, ends the program instead of going on.
set(TAMBO_HARDENING -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
    list(APPEND TAMBO_HARDENING -fcf-protection)
endif()
target_link_options(tambo_flags INTERFACE $<$<CONFIG:Release>:LINKER:-z,relro,-z,now>)

# Given to the program's sources only: those of tests are compiled alike in every build, so that a
# compiler cache has to do it once.
set(CMAKE_CXX_FLAGS_RELEASE "")
set(CMAKE_CXX_FLAGS_SANITIZE "")
# For the sanitizers what compiles fastest among what is fast enough for a run of all tests: windows and other
# targets that tambo_compile_quickly() names wait more than they work, and take a third of the time without
# any optimisation.
target_compile_options(tambo_flags INTERFACE
    $<$<CONFIG:Release>:-O2;-DNDEBUG;${TAMBO_HARDENING}>
    $<$<CONFIG:Sanitize>:$<IF:$<BOOL:$<TARGET_PROPERTY:COMPILED_QUICKLY>>,-O0,-Og>;-g1>)

function(tambo_compile_quickly)
    set_target_properties(${ARGN} PROPERTIES COMPILED_QUICKLY ON)
endfunction()

# tambo_flags_of_core(target): its objects are in libtambo-core.so, which hands out whatever it defines to the
# programs that it is installed with. Nothing takes the place of what it defines, so its own calls need no
# detour, and may be compiled into the caller.
function(tambo_flags_of_core target)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET default)
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
endfunction()
