# Leads calls of the editor to a place where tests see them.
add_library(editor_host_spy OBJECT HostSpy.cpp HostSpy.h)
target_link_libraries(editor_host_spy PRIVATE Qt6::Widgets Tambo::include GTest::gtest)
tambo_compile_as_test(editor_host_spy)
target_link_options(editor_host_spy INTERFACE
    LINKER:--wrap=_Z27qEnvironmentVariableIsEmptyPKc
    LINKER:--wrap=_ZN15QGuiApplication4syncEv
    LINKER:--wrap=_ZN5TAMBO9DataMaker13makeAlignmentERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERKSt6vectorIPNS_8CompoundESaISB_EE
    LINKER:--wrap=_ZNK5TAMBO9Alignment9duplicateEm)

# The editor window, its commands and dialogs.
tambo_test(kalmo_window_test QT
    SOURCES
        dialogs/AcidColorTest.cpp
        window/AcquireTest.cpp
        window/AlignmentFilesTest.cpp
        DialogDriver.h
        window/EntryPointsTest.cpp
        dialogs/MakingOrder.h
        window/NameHitsTest.cpp
        window/NotificationsTest.cpp
        window/PlainNamesTest.cpp
        window/PopulateTest.cpp
        window/RangeCommandsTest.cpp
        window/RangeResiduesTest.cpp
        dialogs/SequenceSelectorTest.cpp
        window/WindowEditsTest.cpp
        window/WindowLayoutTest.cpp
        window/WindowMenusTest.cpp
        window/WindowSettingsTest.cpp
        window/WindowSlotsTest.cpp
    LIBRARIES asked_settings editor_host_spy kalmo_objects Tambo::services Tambo::history Tambo::model)

# Printed pages, and what becomes of them.
tambo_test(kalmo_printing_test QT
    SOURCES
        DialogDriver.h
        printing/PrintingFilesTest.cpp
        printing/PrintingLayoutTest.cpp
        printing/PrintingStyleTest.cpp
    LIBRARIES
        asked_settings kalmo_objects Tambo::services Tambo::history Tambo::model Qt6::PrintSupport
        PkgConfig::POPPLER)
