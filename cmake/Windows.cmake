# What Windows wants to know of a program; elsewhere these functions do nothing.
if(WIN32)
    enable_language(RC)
endif()

set(WINDOWS_FILES ${PROJECT_SOURCE_DIR}/packaging/windows)

# farm_windows(TARGET): paths of any length, in UTF-8 for the C library too, and threads that end in order.
function(farm_windows target)
    if(WIN32)
        target_sources(${target} PRIVATE ${WINDOWS_FILES}/manifest.rc ${WINDOWS_FILES}/ThreadExit.cpp)
        set_source_files_properties(${WINDOWS_FILES}/manifest.rc PROPERTIES OBJECT_DEPENDS ${WINDOWS_FILES}/program.manifest)
    endif()
endfunction()

# farm_program(TARGET DESCRIPTION [CONSOLE]): the manifest, the icon, and the version that the file's properties show.
function(farm_program target description)
    farm_windows(${target})
    if(WIN32)
        set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
        set(icon ${CMAKE_CURRENT_BINARY_DIR}/${target}.ico)
        set(drawing ${PROJECT_SOURCE_DIR}/packaging/farm-monitoring.svg)
        add_custom_command(OUTPUT ${icon} COMMAND icons ico ${drawing} ${icon} DEPENDS icons ${drawing})
        configure_file(${WINDOWS_FILES}/program.rc.in ${resources} @ONLY)
        set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${icon})
        target_sources(${target} PRIVATE ${resources})
        if(NOT "CONSOLE" IN_LIST ARGN)
            set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
        endif()
    endif()
endfunction()
