# The editor's gestures with real mouse events.
tambo_test(test_gestures QT LABEL window
    SOURCES EditingByHandTest.cpp EditingFixture.cpp PanelsByHandTest.cpp VirtualScreen.cpp
        WindowFixture.cpp
    LIBRARIES Tambo::model)
add_dependencies(test_gestures tambo KALMO2)
