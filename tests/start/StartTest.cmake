# See CMakeLists.txt. The scratch folder is this test's own.
file(REMOVE_RECURSE ${SCRATCH})
file(COPY ${ROOT}/run ${PROJECT}/ DESTINATION ${SCRATCH})
file(COPY ${ROOT}/.ci/packages.sh DESTINATION ${SCRATCH}/.ci)
# Nothing is to be installed for this project.
file(WRITE ${SCRATCH}/.ci/packages.txt "# none\n")
unset(ENV{DISPLAY})
unset(ENV{WAYLAND_DISPLAY})
unset(ENV{NINJA_STATUS})
set(ENV{TERM} xterm)

# The project looks into this file while it is built.
set(log ${SCRATCH}/output.txt)
function(start)
    if(OUTPUT STREQUAL terminal)
        execute_process(COMMAND script -qefc ${SCRATCH}/run ${log}
            RESULT_VARIABLE status OUTPUT_QUIET)
    else()
        execute_process(COMMAND ${SCRATCH}/run
            RESULT_VARIABLE status OUTPUT_FILE ${log} ERROR_FILE ${SCRATCH}/errors.txt)
    endif()
    file(READ ${log} said)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "./run ended with ${status} and said:\n${said}")
    endif()
    if(NOT said MATCHES "The small workbench starts")
        message(FATAL_ERROR "nothing was started; ./run said:\n${said}")
    endif()
    set(said "${said}" PARENT_SCOPE)
endfunction()

start()
if(NOT said MATCHES "2/2\\][^\n]*Making the workbench.*The small workbench starts")
    message(FATAL_ERROR "the last step of building was not told:\n${said}")
endif()
# The README promises the example with its structures.
if(NOT said MATCHES "Called with: [^\n]*--tool Structure View [^\n]*/examples/serine_proteases.ali")
    message(FATAL_ERROR "the example is not opened with the structure view:\n${said}")
endif()
start()
if(said MATCHES "Making")
    message(FATAL_ERROR "what was built is built again:\n${said}")
endif()
