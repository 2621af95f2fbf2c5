# Colouring, searching and selecting.
tambo_test(kalmo_color_test QT
    SOURCES
        ColoringFixture.h
        ColoringTest.cpp
        DistanceTest.cpp
        SelectingTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::formats Tambo::model)
