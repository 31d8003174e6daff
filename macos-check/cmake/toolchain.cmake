# Compiles for arm64 macOS on a machine without Apple's headers. Objects only: there is nothing to link with.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUENCHLY_STAGED_HEADERS)

set(CMAKE_C_COMPILER /usr/bin/clang-19)
set(CMAKE_CXX_COMPILER /usr/bin/clang++-19)
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-19)
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos13)
endforeach()
set(CMAKE_CXX_COMPILER_WORKS ON)
set(CMAKE_OBJCXX_COMPILER_WORKS ON)
set(CMAKE_AR /usr/bin/llvm-ar-19 CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-19 CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /bin/true CACHE FILEPATH "")

get_filename_component(check_folder ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(headers -nostdinc++ -nostdlibinc -U__nonnull -D_BSD_SOURCE
    -isystem ${check_folder}/apple -isystem ${QUENCHLY_STAGED_HEADERS}/site
    -isystem /usr/lib/llvm-19/include/c++/v1 -isystem ${QUENCHLY_STAGED_HEADERS}/posix)
set(objective_c -fblocks -Warc-retain-cycles -Werror=objc-method-access
    -isystem ${QUENCHLY_STAGED_HEADERS} -isystem ${check_folder}/gnustep -isystem /usr/include/GNUstep)
list(JOIN headers " " CMAKE_CXX_FLAGS_INIT)
list(JOIN headers " " CMAKE_OBJCXX_FLAGS_INIT)
list(JOIN objective_c " " objective_c)
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " ${objective_c}")

set(Qt6_DIR ${CMAKE_CURRENT_LIST_DIR} CACHE PATH "")
set(nlohmann_json_DIR ${CMAKE_CURRENT_LIST_DIR} CACHE PATH "")
set(UTF8PROC_INCLUDE_DIR ${QUENCHLY_STAGED_HEADERS}/third-party CACHE PATH "")
set(UTF8PROC_LIBRARY libutf8proc.a CACHE FILEPATH "")
