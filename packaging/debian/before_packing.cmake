# Run by cpack on the files that go into the package, when all of them have been installed into its own folder.

# What Debian's own packages lack too.
file(GLOB programs ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/*)
execute_process(COMMAND ${CPACK_VANTOR_STRIP} --remove-section=.comment --remove-section=.note ${programs}
    COMMAND_ERROR_IS_FATAL ANY)
# The day of the release, so that the same sources give the same files.
execute_process(COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -exec touch --no-dereference --date=${CPACK_VANTOR_DATE}Z {} +
    COMMAND_ERROR_IS_FATAL ANY)
