# SPDX-License-Identifier: GPL-3.0-or-later
# Run by cpack on the installed tree: the package's own papers, and compressed
# what policy wants compressed, without a time of day.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
file(COPY ${CPACK_MIRELUND_PACKAGE_FOLDER}/copyright ${CPACK_MIRELUND_PACKAGE_FOLDER}/changelog
  DESTINATION ${share}/doc/mirelund
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
execute_process(COMMAND gzip -9n ${share}/doc/mirelund/changelog ${share}/man/man1/mirelund.1
  COMMAND_ERROR_IS_FATAL ANY)
