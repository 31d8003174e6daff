# The distribution's own package asks for Linux libraries; headers and moc are all that compiling takes.
set(Qt6_FOUND ON)
set(Qt6Core_VERSION ${Qt6_VERSION})
set(QT_VERSION_MAJOR 6)
string(REGEX MATCHALL "[0-9]+" version_parts ${Qt6_VERSION})
list(GET version_parts 0 Qt6Core_VERSION_MAJOR)
list(GET version_parts 1 Qt6Core_VERSION_MINOR)

if(NOT TARGET Qt6::moc)
    find_program(QUENCHLY_MOC moc PATHS /usr/lib/qt6/libexec NO_DEFAULT_PATH REQUIRED)
    find_program(QUENCHLY_RCC rcc PATHS /usr/lib/qt6/libexec NO_DEFAULT_PATH REQUIRED)
    add_executable(Qt6::moc IMPORTED)
    set_target_properties(Qt6::moc PROPERTIES IMPORTED_LOCATION ${QUENCHLY_MOC})
    add_executable(Qt6::rcc IMPORTED)
    set_target_properties(Qt6::rcc PROPERTIES IMPORTED_LOCATION ${QUENCHLY_RCC})
endif()

file(GLOB qt_headers /usr/include/*/qt6)
set(qt_needs_Gui Qt6::Core)
set(qt_needs_Network Qt6::Core)
set(qt_needs_Widgets Qt6::Gui)
foreach(module Core Gui Network Widgets)
    if(NOT TARGET Qt6::${module})
        add_library(Qt6::${module} INTERFACE IMPORTED)
        string(TOUPPER ${module} upper)
        set_target_properties(Qt6::${module} PROPERTIES
            INTERFACE_COMPILE_DEFINITIONS QT_${upper}_LIB
            INTERFACE_INCLUDE_DIRECTORIES "${qt_headers};${qt_headers}/Qt${module}"
            INTERFACE_LINK_LIBRARIES "${qt_needs_${module}}")
    endif()
endforeach()
