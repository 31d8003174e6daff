# Run by CPack: two packages of the same programs are the same to the byte, as each file is as old as the release.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND dpkg-parsechangelog -l ${CPACK_QUENCHLY_CHANGELOG} -S Timestamp
        OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
