# What a packager sets, as -DNAME=VALUE. The defaults are reserved example names: they reach nobody.
set(QUENCHLY_VENDOR_NAME Quenchly CACHE STRING "Who the copyright is with, as in the panel's copyright line")
set(QUENCHLY_VENDOR_HOST brindlemoor.example CACHE STRING "Host of the product's pages, below /quenchly/")
set(QUENCHLY_SUPPORT_ADDRESS support@brindlemoor.example CACHE STRING "Mail address of the support")
set(QUENCHLY_UPDATE_FEED https://brindlemoor.example/quenchly/appcast.xml CACHE STRING "Update feed (https), macOS only")
set(QUENCHLY_UPDATE_KEY PLACEHOLDER CACHE STRING "Public Ed25519 key of the updates in base64, macOS only")

if(NOT QUENCHLY_VENDOR_NAME MATCHES "^[^]<>&\"@\\;:,()[\n\t]+$")
    message(FATAL_ERROR "QUENCHLY_VENDOR_NAME is empty or holds a character that is not allowed in it: ${QUENCHLY_VENDOR_NAME}")
endif()
# They end up in a C++ header, an information property list, manual pages and the Debian package's files.
foreach(name QUENCHLY_VENDOR_HOST QUENCHLY_SUPPORT_ADDRESS QUENCHLY_UPDATE_FEED QUENCHLY_UPDATE_KEY)
    if(NOT ${name} MATCHES "^[A-Za-z0-9._~:/?#@!$'()*+,;=%-]*$")
        message(FATAL_ERROR "${name} holds a character that is not allowed in it: ${${name}}")
    endif()
endforeach()

configure_file(${CMAKE_CURRENT_LIST_DIR}/product.h.in ${CMAKE_BINARY_DIR}/product/product.h @ONLY)
add_library(QuenchlyProduct INTERFACE)
target_include_directories(QuenchlyProduct INTERFACE ${CMAKE_BINARY_DIR}/product)
