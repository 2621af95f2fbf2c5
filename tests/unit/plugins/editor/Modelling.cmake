# The modelling job and the file of its template.
tambo_test(kalmo_modelling_test QT
    SOURCES
        modelling/LastWordsTest.cpp
        modelling/ModellingFixture.cpp modelling/ModellingFixture.h
        modelling/ModellingJobTest.cpp
        modelling/ModellingOutputTest.cpp
        modelling/WritePDBTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::formats Tambo::model)
