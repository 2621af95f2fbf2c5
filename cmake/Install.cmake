# The workbench with its plug-ins, and a development component for those who write another.
include(CMakePackageConfigHelpers)

# All that have a descriptor of the workbench's own.
get_property(own_plugins GLOBAL PROPERTY TAMBO_OWN_PLUGINS)

add_custom_target(workbench)
foreach(part tambo kestram ${own_plugins})
    if(TARGET ${part})
        add_dependencies(workbench ${part})
    endif()
endforeach()

if(TARGET tambo)
    install(TARGETS tambo RUNTIME DESTINATION bin COMPONENT workbench)
    install(TARGETS tambo-page-painter LIBRARY DESTINATION ${TAMBO_LIBRARY_DIR} COMPONENT workbench)
    # Scripts need it, too, and which programs there are for what.
    install(TARGETS tambo-core LIBRARY DESTINATION ${TAMBO_LIBRARY_DIR} COMPONENT core)
    install(FILES share/defaults.ini DESTINATION ${TAMBO_SHARE_DIR} COMPONENT core)
endif()
if(TARGET kestram)
    install(TARGETS kestram RUNTIME DESTINATION bin COMPONENT workbench)
endif()
install(TARGETS ${own_plugins} LIBRARY DESTINATION ${TAMBO_PLUGIN_DIR} COMPONENT workbench)
install(DIRECTORY share/ DESTINATION ${TAMBO_SHARE_DIR} COMPONENT workbench
        PATTERN CMakeLists.txt EXCLUDE
        PATTERN defaults.ini EXCLUDE
        REGEX "/families/(array[.]sbatch|slurm/status)$"
        PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(FILES CHANGELOG.md DESTINATION ${TAMBO_SHARE_DIR} COMPONENT workbench)
install(DIRECTORY examples DESTINATION ${TAMBO_SHARE_DIR} COMPONENT workbench
        PATTERN plugins EXCLUDE PATTERN scripts EXCLUDE)

install(FILES docs/plugin-interface.md DESTINATION share/doc/tambo
        COMPONENT development)
install(DIRECTORY examples/plugins DESTINATION ${TAMBO_SHARE_DIR}/examples COMPONENT development)

set(kit_dir lib/cmake/TamboKit)
get_property(TAMBO_KIT_VERSION GLOBAL PROPERTY TAMBO_KIT_VERSION)
install(TARGETS tambo_kit EXPORT TamboKitTargets
        FILE_SET HEADERS DESTINATION include/tambo COMPONENT development)
install(EXPORT TamboKitTargets NAMESPACE Tambo:: DESTINATION ${kit_dir} COMPONENT development)
configure_package_config_file(cmake/TamboKitConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/TamboKitConfig.cmake INSTALL_DESTINATION ${kit_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/TamboKitConfigVersion.cmake
                                 VERSION ${TAMBO_KIT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TamboKitConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/TamboKitConfigVersion.cmake
              cmake/TamboPlugin.cmake cmake/plugin.exports
        DESTINATION ${kit_dir} COMPONENT development)
