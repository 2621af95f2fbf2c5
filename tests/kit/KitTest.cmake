# See CMakeLists.txt. The scratch folder is this test's own.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE text)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nended with ${status}\n${text}")
    endif()
    set(output "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
set(prefix ${SCRATCH}/prefix)
set(plugins ${prefix}/lib/tambo/plugins)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

# Each plug-in that the workbench brings is built and installed with it.
file(GLOB descriptors ${plugins}/*.plugin)
list(LENGTH descriptors count)
if(count LESS 3)
    message(FATAL_ERROR "${plugins} has ${count} plug-ins: ${descriptors}")
endif()
foreach(descriptor IN LISTS descriptors)
    string(REGEX REPLACE "\\.plugin$" "" library ${descriptor})
    file(GLOB library ${library} ${library}.so ${library}.so.*)
    if(NOT library)
        message(FATAL_ERROR "${descriptor} has no library beside it")
    endif()
endforeach()

# The code of the page is all there is to it, but for a picture.
set(project ${SCRATCH}/project)
run(${PYTHON} ${EXTRACT} ${prefix}/share/doc/tambo/plugin-interface.md ${project})
file(COPY ${prefix}/share/tambo/examples/plugins/counter/counter.svg DESTINATION ${project}/counter)
# This one is too long for a page.
file(COPY ${prefix}/share/tambo/examples/plugins/column-statistics DESTINATION ${project})

# One alone, as the page says it.
run(${CMAKE_COMMAND} -S ${project}/minimal -B ${SCRATCH}/alone
    -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${COMPILER})
run(${CMAKE_COMMAND} --build ${SCRATCH}/alone)
if(NOT EXISTS ${SCRATCH}/alone/minimal.so)
    message(FATAL_ERROR "${SCRATCH}/alone has no minimal.so")
endif()

# All of them, in one go since that is faster.
file(GLOB examples RELATIVE ${project} ${project}/*)
set(together "cmake_minimum_required(VERSION 3.25)\nproject(examples LANGUAGES CXX)\n")
foreach(example IN LISTS examples)
    string(APPEND together "add_subdirectory(${example})\n")
endforeach()
file(WRITE ${project}/CMakeLists.txt "${together}")
run(${CMAKE_COMMAND} -S ${project} -B ${SCRATCH}/build -G Ninja
    -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${COMPILER})
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)

set(ENV{TAMBO_USER_DIR} ${SCRATCH}/user)
function(expect_in_log text)
    file(GLOB_RECURSE logs ${SCRATCH}/user/*log*)
    foreach(log IN LISTS logs)
        file(READ ${log} written)
        if(written MATCHES "${text}")
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "no log (${logs}) has the line: ${text}")
endfunction()

function(expect_not_in_log text)
    file(GLOB_RECURSE logs ${SCRATCH}/user/*log*)
    foreach(log IN LISTS logs)
        file(READ ${log} written)
        if(written MATCHES "${text}")
            message(FATAL_ERROR "${log} has the line: ${text}")
        endif()
    endforeach()
endfunction()

# Nothing that was installed on the machine is a part of this.
set(ENV{TAMBO_SYSTEM_PLUGIN_DIRS} "")

# Installing puts library, descriptor, icon and help where a workbench of the prefix looks.
run(${CMAKE_COMMAND} --install ${SCRATCH}/build --prefix ${SCRATCH}/theirs)
foreach(file minimal.so minimal.plugin counter.so counter.plugin
        counter/counter.svg counter/counter.html letters.so letters.plugin)
    string(REGEX MATCH "^[a-z]+" example ${file})
    foreach(folder ${SCRATCH}/build/${example} ${SCRATCH}/theirs/lib/tambo/plugins)
        if(NOT EXISTS ${folder}/${file})
            message(FATAL_ERROR "there is no ${folder}/${file}")
        endif()
    endforeach()
endforeach()

# Without the editor nothing is called to show an alignment: not when it is opened, not when a picture
# is made of it, and not when it is printed.
file(MAKE_DIRECTORY ${SCRATCH}/editor)
file(GLOB editor ${plugins}/libKALMO2*)
file(COPY ${editor} DESTINATION ${SCRATCH}/editor)
file(REMOVE ${editor})
set(ENV{TAMBO_PLUGIN_DIR} ${SCRATCH}/theirs/lib/tambo/plugins)
run(${prefix}/bin/tambo --picture ${SCRATCH}/without.png ${DATA})
set(ENV{TAMBO_EXIT_WHEN_PAINTED} 1)
run(${prefix}/bin/tambo ${DATA})
execute_process(COMMAND ${prefix}/bin/tambo print ${DATA} --style bw --output ${SCRATCH}/out.pdf
    RESULT_VARIABLE status ERROR_VARIABLE text)
if(status EQUAL 0 OR NOT text MATCHES "there is no alignment editor in")
    message(FATAL_ERROR "printing without the editor ended with ${status}\n${text}")
endif()
expect_not_in_log("Minimal:")
expect_not_in_log("Counter:")
expect_not_in_log("cannot be used")

# One that says that it shows alignments is called.
file(COPY ${SCRATCH}/build/minimal/minimal.so DESTINATION ${SCRATCH}/viewer)
file(READ ${SCRATCH}/build/minimal/minimal.plugin descriptor)
file(WRITE ${SCRATCH}/viewer/minimal.plugin "${descriptor}Role = alignments\n")
set(ENV{TAMBO_PLUGIN_DIR} ${SCRATCH}/viewer)
run(${prefix}/bin/tambo ${DATA})
expect_in_log("Minimal: 6 chains are red")

# One that follows steps has seen the file come, and gets the answer that it gives itself.
file(COPY ${SCRATCH}/build/widths/widths.so DESTINATION ${SCRATCH}/follower)
file(READ ${SCRATCH}/build/widths/widths.plugin descriptor)
file(WRITE ${SCRATCH}/follower/widths.plugin "${descriptor}Role = alignments\n")
set(ENV{TAMBO_PLUGIN_DIR} ${SCRATCH}/follower)
run(${prefix}/bin/tambo ${DATA})
expect_in_log("Widths: serine_proteases has [0-9]+ columns")
unset(ENV{TAMBO_EXIT_WHEN_PAINTED})

# With the editor, and the others from the folder of another prefix, all load and the editor shows
# the alignment.
file(GLOB editor ${SCRATCH}/editor/*)
file(COPY ${editor} DESTINATION ${plugins})
set(ENV{TAMBO_PLUGIN_DIR} ${SCRATCH}/theirs/lib/tambo/plugins)
expect_not_in_log("a cysteine is framed")
run(${prefix}/bin/tambo --picture ${SCRATCH}/with.png ${DATA})
expect_not_in_log("cannot be used")
expect_in_log("Frames: a cysteine is framed")
file(SIZE ${SCRATCH}/without.png without)
file(SIZE ${SCRATCH}/with.png with)
if(NOT with GREATER without)
    message(FATAL_ERROR "the editor's window is missing beside the workbench's")
endif()

# A command of a plug-in runs without a screen, and the help of the program lists it.
run(${prefix}/bin/tambo letters ${DATA})
if(NOT output MATCHES "^[1-9][0-9]+\n")
    message(FATAL_ERROR "tambo letters wrote\n${output}")
endif()
run(${prefix}/bin/tambo --help)
if(NOT output MATCHES "tambo letters  +How many letters the sequences of files have\n")
    message(FATAL_ERROR "tambo --help wrote\n${output}")
endif()

# The same for one with all that a plug-in may have; without it the word is unknown.
function(expect_status expected text)
    execute_process(COMMAND ${prefix}/bin/tambo ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL expected OR NOT output MATCHES "${text}")
        message(FATAL_ERROR "tambo ${ARGN} ended with ${status}\n${output}")
    endif()
endfunction()
file(WRITE ${SCRATCH}/small.fasta ">a\nAC-\n>b\nAC-\n>c\nAG-\n>d\n-G-\n")
run(${prefix}/bin/tambo column-statistics ${SCRATCH}/small.fasta)
if(NOT output STREQUAL "column\toccupancy\tletter\tshare\tentropy
1\t0.7500\tA\t1.0000\t0.0000
2\t1.0000\tC\t0.5000\t1.0000
3\t0.0000\t-\t-\t-
")
    message(FATAL_ERROR "tambo column-statistics wrote\n${output}")
endif()
expect_status(1 "nothing.fasta" column-statistics ${SCRATCH}/nothing.fasta)
expect_status(2 "Usage: tambo column-statistics" column-statistics)
unset(ENV{TAMBO_PLUGIN_DIR})
expect_status(2 "column-statistics" column-statistics ${SCRATCH}/small.fasta)

# A kit of another major version is not taken.
file(WRITE ${SCRATCH}/newer/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(newer LANGUAGES CXX)
find_package(TamboKit 2 REQUIRED)
")
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SCRATCH}/newer -B ${SCRATCH}/newer/build
    -D CMAKE_PREFIX_PATH=${prefix} RESULT_VARIABLE status OUTPUT_QUIET ERROR_QUIET)
if(status EQUAL 0)
    message(FATAL_ERROR "a plug-in for version 2 of the kit was configured with version 1")
endif()
