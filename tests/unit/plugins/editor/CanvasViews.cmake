# The views, the canvas items and what belongs to them.
tambo_test(kalmo_views_test QT
    SOURCES
        grid/CellToolTipTest.cpp
        grid/HeaderPanelTest.cpp
        grid/HitPaintingTest.cpp
        residues/IdentityReportTest.cpp
        grid/NameAndMarkItemsTest.cpp
        grid/NamePanelTest.cpp
        grid/NumberingItemsTest.cpp
        grid/ResidueItemTest.cpp
        grid/ResidueLatticeTest.cpp
        residues/ResidueLettersTest.cpp
        grid/ViewTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::model)

# The workbench and the editor count alike.
tambo_test(identity_test QT
    SOURCES residues/PairIdentityTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::model)
