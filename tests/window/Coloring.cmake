# Colouring and searching on virtual screens.
tambo_test(test_coloring QT LABEL window
    SOURCES ColoringByHandTest.cpp VirtualScreen.cpp WindowFixture.cpp
    LIBRARIES Tambo::formats Tambo::model)
add_dependencies(test_coloring tambo KALMO2)
