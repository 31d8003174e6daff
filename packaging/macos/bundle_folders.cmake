# What is installed on macOS is one application bundle that holds everything; it can be moved, copied and signed as one.
set(QUENCHLY_BUNDLE Quenchly.app)
set(CMAKE_INSTALL_MANDIR ${QUENCHLY_BUNDLE}/Contents/Resources/man)
# Code may lie in few places of a signed bundle. Not beside the main executable: there the real checker is looked for.
set(QUENCHLY_HELPERS ${QUENCHLY_BUNDLE}/Contents/Helpers)

# Before everything else is installed: what is left of another version would be signed with the rest.
install(CODE "file(REMOVE_RECURSE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${QUENCHLY_BUNDLE}\")")
