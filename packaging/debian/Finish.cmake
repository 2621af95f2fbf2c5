# Puts into the folders that packages are made of what Debian asks for: changelog, copyright, compressed
# manual pages, and what lintian is not to complain about. A time of their own would make files that
# differ each time.
foreach(component IN ITEMS workbench development)
    set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component})
    if(component STREQUAL workbench)
        set(package tambo)
    else()
        set(package tambo-dev)
    endif()
    set(doc ${root}/usr/share/doc/${package})
    file(MAKE_DIRECTORY ${doc})
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc})
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/changelog DESTINATION ${doc})
    set(files ${doc}/changelog)
    file(GLOB pages ${root}/usr/share/man/man1/*.1)
    foreach(file IN LISTS files pages)
        execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/${package}.lintian-overrides)
        file(COPY ${CMAKE_CURRENT_LIST_DIR}/${package}.lintian-overrides
             DESTINATION ${root}/usr/share/lintian/overrides)
        file(RENAME ${root}/usr/share/lintian/overrides/${package}.lintian-overrides
                    ${root}/usr/share/lintian/overrides/${package})
    endif()
endforeach()
