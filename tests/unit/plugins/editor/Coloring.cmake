# Colouring, searching and selecting.
tambo_test(kalmo_color_test QT
    SOURCES
        residues/ColoringFixture.h
        residues/ColoringTest.cpp
        residues/DistanceTest.cpp
        residues/SelectingTest.cpp
    LIBRARIES asked_settings kalmo_objects Tambo::services Tambo::history Tambo::formats Tambo::model)
