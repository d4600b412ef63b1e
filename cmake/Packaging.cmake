# `cpack -G DEB` in the build folder makes a Debian package of the suite.
#
# The suite is one tree that finds its files from the program's own folder
# (orva.ini one level up, glq.pts, the samples and the help beside it), so the
# package keeps that tree whole in /opt/brenmoor, the place for such
# self-contained software, rather than spreading it over /usr/lib, /usr/share
# and /etc. What the desktop and the shell look for elsewhere moves out of the
# tree when the package is made (deb_layout.cmake): the menu entries, icons and
# file kinds to /usr/share, the launchers (links into the tree) to /usr/bin.
# The temporary folder, where the workbench writes its plot file, is open to
# every user like /tmp.
set(CPACK_PACKAGE_NAME brenmoor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Brenmoor developers")
set(CPACK_PACKAGE_CONTACT "Brenmoor developers <brenmoor@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Analytical groundwater contaminant transport workbench")
set(CPACK_PACKAGE_DESCRIPTION
    "Brenmoor computes relative concentrations of contaminants in groundwater from closed-form
solutions: saturated flow in one, two and three dimensions, decay chains, time-varying
dispersion, unsaturated transport and Monte Carlo simulation. The package holds the
workbench, the batch calculator brenmoor-calc, the plotting utility Trazel, the text
viewer, sample models and help.")
set(CPACK_PACKAGING_INSTALL_PREFIX /opt/brenmoor)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries the programs link come from dpkg-shlibdeps; Qt's X11 platform
# plugin and the font of the printed report are not linked, so they are named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/deb_layout.cmake)
include(CPack)
