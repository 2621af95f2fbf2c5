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
run(${CMAKE_COMMAND} -S ${PROJECT} -B ${SCRATCH}/build -G Ninja
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

# Without the editor the workbench asks these in turn to show the alignment: the one opens a window,
# which cannot and is closed again, the other runs.
set(ENV{TAMBO_PLUGIN_DIR} ${SCRATCH}/build)
run(${prefix}/bin/tambo --picture ${SCRATCH}/without.png ${DATA})
expect_in_log("Minimal: 6 chains are red")

# Installed beside the editor, all load and the editor shows the alignment.
unset(ENV{TAMBO_PLUGIN_DIR})
file(COPY ${SCRATCH}/build/counter.so ${SCRATCH}/build/minimal.so DESTINATION ${plugins})
run(${prefix}/bin/tambo --picture ${SCRATCH}/with.png ${DATA})
file(SIZE ${SCRATCH}/without.png without)
file(SIZE ${SCRATCH}/with.png with)
if(NOT with GREATER without)
    message(FATAL_ERROR "the editor's window is missing beside the workbench's")
endif()
