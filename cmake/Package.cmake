# Packages for Debian, made by ./package: the workbench with its plug-ins, the kit for those who write
# another, the package for Python, and what workbench and Python share.
set(CPACK_GENERATOR DEB)
# Each package has its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "The Tambo developers")
set(CPACK_PACKAGE_CONTACT "The Tambo developers <maintainers@tambo.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${TAMBO_HOMEPAGE})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Of all that may be built here, what is installed is enough.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL core workbench development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Where packages find the library of another one while they are made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/${TAMBO_LIBRARY_DIR})

set(CPACK_DEBIAN_CORE_PACKAGE_NAME tambo-core)
set(CPACK_DEBIAN_CORE_PACKAGE_SECTION science)
set(CPACK_DEBIAN_CORE_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_CORE_DESCRIPTION "molecules, files and sessions of the Tambo workbench
What the workbench and its package for Python have in common: alignments and
structures, their files, undo, and sessions. It needs no toolkit and no screen,
and is of no use by itself.")

set(CPACK_DEBIAN_WORKBENCH_PACKAGE_NAME tambo)
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_SECTION science)
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_SHLIBDEPS ON)
# What the program opens by name: what makes pages, pictures of icons, and letters where the system has
# none.
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_DEPENDS
    "tambo-core (= ${PROJECT_VERSION}), libcairo2 (>= 1.16), libpoppler-glib8 (>= 22.12), libqt6svg6 (>= 6.4), fonts-dejavu-core")
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_RECOMMENDS "mafft, fasttree")
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_SUGGESTS "promod3, qt6-wayland, snakemake, tambo-dev")
set(CPACK_DEBIAN_WORKBENCH_DESCRIPTION "workbench for protein structures with an alignment editor
An interactive editor of multiple sequence alignments, which shows them as a
grid of residue letters tied to the structures that the sequences come from.
Gaps and rows are put in place by hand, residues colored by property,
conservation or the spread of superposed structures, ranges realigned, and
models built from an alignment and a template.
.
Reads and writes PIR, FASTA, Clustal, Stockholm, MSF, PHYLIP, NEXUS, PDB and
mmCIF.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME tambo-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "tambo (= ${PROJECT_VERSION}), qt6-base-dev, cmake, g++")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "kit for plug-ins of the Tambo workbench
Headers, a CMake package, a page that explains both, and examples: what is
needed to write a plug-in that adds windows, commands, marks on alignments or
commands of the program.")

if(TAMBO_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-tambo)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
# The library that it shares with the workbench is of one version with both, and the compiled half is for one
# version of Python.
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "tambo-core (= ${PROJECT_VERSION}), python3 (>= ${PYTHON_VERSION}~), python3 (<< ${PYTHON_NEXT_VERSION}), libpython${PYTHON_VERSION}, python3-numpy, libc6, libgcc-s1, libstdc++6 (>= 12)")
# For pictures and models, and for columns that are realigned.
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "tambo (= ${PROJECT_VERSION}), mafft")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-biopython, python3-pandas")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    "${PROJECT_SOURCE_DIR}/packaging/debian/python3-tambo/postinst;${PROJECT_SOURCE_DIR}/packaging/debian/python3-tambo/prerm")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "alignments and structures of the Tambo workbench for Python
What the windows of the workbench do with alignments and protein structures,
for scripts: files of all its formats, numpy arrays of letters and positions,
edits of gaps, rows and columns, superposing, and undo. Needs no screen.")

# What a package has beside what is installed.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/Finish.cmake)
include(CPack)
