# Run by CPack on the staged files. Debian wants these compressed, without a name or a time in them, and its folders the
# same whatever the umask of who makes the package.
set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
file(GLOB files ${share}/man/man1/*.1 ${share}/doc/quenchly-menubar/changelog)
execute_process(COMMAND gzip -9n ${files} COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY} DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
