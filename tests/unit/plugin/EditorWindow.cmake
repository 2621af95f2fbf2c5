# The editor window, its commands and dialogs.
tambo_test(kalmo_window_test QT
    SOURCES
        AcidColorTest.cpp
        AcquireTest.cpp
        AlignmentFilesTest.cpp
        DialogDriver.h
        EntryPointsTest.cpp
        NameHitsTest.cpp
        NotificationsTest.cpp
        PlainNamesTest.cpp
        PopulateTest.cpp
        RangeCommandsTest.cpp
        RangeResiduesTest.cpp
        SequenceSelectorTest.cpp
        WindowEditsTest.cpp
        WindowLayoutTest.cpp
        WindowMenusTest.cpp
        WindowSettingsTest.cpp
        WindowSlotsTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)

# Printed pages, and what becomes of them.
tambo_test(kalmo_printing_test QT
    SOURCES
        DialogDriver.h
        PrintingFilesTest.cpp
        PrintingLayoutTest.cpp
        PrintingStyleTest.cpp
    LIBRARIES
        kalmo_objects Tambo::services Tambo::history Tambo::model Qt6::PrintSupport
        PkgConfig::POPPLER)
