# varnel.pc, relocatable: the prefix is found from the file's own folder, so an
# install moved elsewhere (a package unpacked into another root) still works.
# The static library's dependencies are private: SQLite through its own .pc;
# libpq by name, since Debian's libpq.pc lists static archives it does not ship.
file(RELATIVE_PATH VARNEL_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" VARNEL_PC_TO_PREFIX "${VARNEL_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/varnel.pc.in ${CMAKE_CURRENT_BINARY_DIR}/varnel.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/varnel.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT library)
