# What windows show while the alignment is edited by hand, elsewhere and by undo.
tambo_test(kalmo_display_test QT
    SOURCES
        EditingStepsTest.cpp
        Hands.h
        PaintWatch.h
        PaintingTest.cpp
        SeveralWindowsTest.cpp
        WindowsClosingTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)
