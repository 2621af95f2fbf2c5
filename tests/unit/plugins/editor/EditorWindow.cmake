# The editor window, its commands and dialogs.
tambo_test(kalmo_window_test QT
    SOURCES
        dialogs/AcidColorTest.cpp
        window/AcquireTest.cpp
        window/AlignmentFilesTest.cpp
        DialogDriver.h
        window/EntryPointsTest.cpp
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
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)

# Printed pages, and what becomes of them.
tambo_test(kalmo_printing_test QT
    SOURCES
        DialogDriver.h
        printing/PrintingFilesTest.cpp
        printing/PrintingLayoutTest.cpp
        printing/PrintingStyleTest.cpp
    LIBRARIES
        kalmo_objects Tambo::services Tambo::history Tambo::model Qt6::PrintSupport
        PkgConfig::POPPLER)
