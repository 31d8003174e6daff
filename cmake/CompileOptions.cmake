# Linked privately by every target of ours, so that the libraries' own headers are never held to our warnings: the tests
# by the warnings alone, the rest by all options.
add_library(QuenchlyWarnings INTERFACE)
add_library(QuenchlyCompileOptions INTERFACE)
target_link_libraries(QuenchlyCompileOptions INTERFACE QuenchlyWarnings)
target_compile_options(QuenchlyWarnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Wconversion -Wno-sign-conversion -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees an overlap in every inlined "literal" + std::string (its bug 105651).
    target_compile_options(QuenchlyWarnings INTERFACE -Wno-restrict)
endif()
target_compile_definitions(QuenchlyWarnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
if(QUENCHLY_WERROR)
    target_compile_options(QuenchlyWarnings INTERFACE -Werror)
endif()

if(NOT APPLE AND NOT QUENCHLY_SANITIZE)
    # What distributions build with, beside position-independent programs, which their compilers make unasked. Some
    # compilers define _FORTIFY_SOURCE themselves; it takes an optimizing build.
    target_compile_options(QuenchlyCompileOptions INTERFACE -fstack-protector-strong
        $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>)
    target_link_options(QuenchlyCompileOptions INTERFACE -Wl,--as-needed -Wl,-z,relro -Wl,-z,now)
endif()

if(QUENCHLY_SANITIZE)
    add_compile_options(-fsanitize=${QUENCHLY_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUENCHLY_SANITIZE})
endif()

# cmake/HEADER.h, precompiled for a target. It may hold nothing that the target is not allowed to include.
function(quenchly_precompile target header)
    target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/${header}.h)
endfunction()
