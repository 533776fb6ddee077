# farm_module(NAME SOURCES ... LINKS ...): one static library per folder of src/. The name is the folder's path with "_".
function(farm_module name)
    cmake_parse_arguments(MODULE "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${MODULE_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${MODULE_LINKS} PRIVATE farm_warnings)
endfunction()

# farm_test(STEM LINKS ...): one test program from STEMTest.cpp in the current folder, run offscreen in a fixed locale and zone.
function(farm_test stem)
    cmake_parse_arguments(CASE "" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
    if(NOT CASE_TIMEOUT)
        set(CASE_TIMEOUT 120)
    endif()
    add_executable(${stem}Test ${stem}Test.cpp ${CASE_SOURCES})
    target_include_directories(${stem}Test PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${stem}Test PRIVATE ${CASE_LINKS} Qt6::Test farm_warnings)
    add_test(NAME ${stem} COMMAND ${stem}Test)
    set_tests_properties(${stem} PROPERTIES TIMEOUT ${CASE_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=${FARM_TEST_LOCALE};TZ=Africa/Johannesburg")
endfunction()
set(FARM_TEST_LOCALE "en_ZA.UTF-8" CACHE STRING "Locale in which ctest runs the tests")
