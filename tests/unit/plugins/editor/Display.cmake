# What windows show while the alignment is edited by hand, elsewhere and by undo.
tambo_test(kalmo_display_test QT
    SOURCES
        window/CatchingUpTest.cpp
        window/EditCostTest.cpp
        window/EditingStepsTest.cpp
        window/Hands.h
        PaintWatch.h
        window/PaintingTest.cpp
        window/SeveralWindowsFixture.h
        window/SeveralWindowsTest.cpp
        window/WaitingDialogsTest.cpp
        window/WindowsClosingTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)
