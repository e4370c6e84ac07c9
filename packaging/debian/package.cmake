# The Debian package, made by cpack.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantor-prep)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${VANTOR_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/before_packing.cmake)
set(CPACK_VANTOR_STRIP "${CMAKE_STRIP}")
set(CPACK_VANTOR_DATE "${VANTOR_RELEASE_DATE}")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# Everything that is installed anyway, and what Debian wants beside it.
set(CPACK_INSTALL_CMAKE_PROJECTS
    ${PROJECT_BINARY_DIR} ${PROJECT_NAME} ALL / ${PROJECT_BINARY_DIR} ${PROJECT_NAME} debian /)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://${VANTOR_SITE}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "prepare fashion photo shoots and print their QR cards")
file(READ ${CMAKE_CURRENT_LIST_DIR}/description CPACK_PACKAGE_DESCRIPTION)

# Libraries are found from the executables. The rest is what they look for while they run: the cards' font, and the
# texts of the toolkit's own dialogs.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-color-emoji")
if(VANTOR_WITH_QT)
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", qt6-translations-l10n")
    string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS
        ", desktop-file-utils, hicolor-icon-theme, qt6-wayland, shared-mime-info, xdg-utils, ca-certificates")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-gtk-platformtheme")
endif()

include(CPack)
