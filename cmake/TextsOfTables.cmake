# Some lists stand in a table of a source and are needed by files that are not compiled from it.
# texts_of_table(RESULT SOURCE TABLE): the quoted texts in the definition of TABLE, in their order.
function(texts_of_table result source table)
    set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${source})
    file(READ ${CMAKE_SOURCE_DIR}/${source} text)
    string(REGEX MATCH " ${table}( =|{)[^;]*;" definition "${text}")
    string(REGEX MATCHALL "\"[A-Za-z-]+\"" texts "${definition}")
    if(NOT texts)
        message(FATAL_ERROR "${source} has no texts in a table ${table}")
    endif()
    string(REPLACE "\"" "" texts "${texts}")
    set(${result} ${texts} PARENT_SCOPE)
endfunction()

texts_of_table(QUENCHLY_LANGUAGES core/app_language.h localeIdentifiers)
texts_of_table(QUENCHLY_SCENARIOS demo/scenarios.cpp scenarios)

# As the manual pages print them: with a comma between each two, and the last one apart.
foreach(list LANGUAGES SCENARIOS)
    set(names ${QUENCHLY_${list}})
    list(POP_BACK names MAN_LAST_OF_${list})
    list(JOIN names " , " MAN_${list})
endforeach()
list(TRANSFORM QUENCHLY_LANGUAGES REPLACE ".+" "        <string>\\0</string>" OUTPUT_VARIABLE languages)
list(JOIN languages "\n" PLIST_LANGUAGES)
