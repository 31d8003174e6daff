find_package(nlohmann_json 3.10 REQUIRED)

find_path(UTF8PROC_INCLUDE_DIR utf8proc.h REQUIRED)
if(APPLE)
    # So that quenchly-status is one file that runs from anywhere.
    find_library(UTF8PROC_LIBRARY libutf8proc.a)
endif()
find_library(UTF8PROC_LIBRARY utf8proc REQUIRED)
add_library(utf8proc::utf8proc UNKNOWN IMPORTED)
set_target_properties(utf8proc::utf8proc PROPERTIES
    IMPORTED_LOCATION ${UTF8PROC_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${UTF8PROC_INCLUDE_DIR})

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network)
if(UNIX AND NOT APPLE)
    find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
    # Its CMake files came late; what it needs itself differs between versions.
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(RE2 REQUIRED IMPORTED_TARGET re2)
endif()
if(QUENCHLY_TESTS)
    find_package(GTest REQUIRED)
endif()
if(QUENCHLY_TESTS OR QUENCHLY_BENCH)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()
