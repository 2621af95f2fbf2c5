# What windows show while the alignment is edited by hand, elsewhere and by undo.
tambo_test(kalmo_display_test QT
    SOURCES
        CatchingUpTest.cpp
        EditingStepsTest.cpp
        Hands.h
        PaintWatch.h
        PaintingTest.cpp
        SeveralWindowsFixture.h
        SeveralWindowsTest.cpp
        WaitingDialogsTest.cpp
        WindowsClosingTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)
