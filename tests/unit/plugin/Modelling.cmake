# The modelling job and the file of its template.
tambo_test(kalmo_modelling_test QT
    SOURCES
        LastWordsTest.cpp
        ModellingFixture.cpp ModellingFixture.h
        ModellingJobTest.cpp
        ModellingOutputTest.cpp
        WritePDBTest.cpp
    LIBRARIES kalmo_objects Tambo::services Tambo::history Tambo::formats Tambo::model)
