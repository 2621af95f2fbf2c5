# Editor windows as other plug-ins see and use them.
tambo_test(kalmo_served_test QT
    SOURCES
        window/AlignmentWindowFixture.h
        window/CellSizeTest.cpp
        window/ChosenFontTest.cpp
        window/EagerDisplay.h
        window/ItemsOnDemandTest.cpp
        PaintWatch.h
        window/OverlayTest.cpp
        window/ServedWindowTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::model)
