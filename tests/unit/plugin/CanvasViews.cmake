# The views, the canvas items and what belongs to them.
tambo_test(kalmo_views_test QT
    SOURCES
        CellToolTipTest.cpp
        HeaderPanelTest.cpp
        HitPaintingTest.cpp
        IdentityReportTest.cpp
        NameAndMarkItemsTest.cpp
        NamePanelTest.cpp
        ResidueItemTest.cpp
        ResidueLatticeTest.cpp
        ResidueLettersTest.cpp
        ViewTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::model)
