# SPDX-License-Identifier: Apache-2.0
# Run by cpack when the packages are made. Replaces the scripts by which cpack calls ldconfig for
# the package with shared libraries: with Debian's trigger, it runs once for all packages installed.
list(FILTER CPACK_PACKAGE_FILES INCLUDE REGEX "/${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME}_[^/]*$")
set(tree ${CPACK_TEMPORARY_DIRECTORY}/with-trigger)

file(REMOVE_RECURSE ${tree})
execute_process(COMMAND dpkg-deb --raw-extract ${CPACK_PACKAGE_FILES} ${tree}
                COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
file(WRITE ${tree}/DEBIAN/triggers "activate-noawait ldconfig\n")
execute_process(COMMAND dpkg-deb --root-owner-group --build ${tree} ${CPACK_PACKAGE_FILES}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
