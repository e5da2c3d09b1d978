# What differs between the kinds of packages; CPack reads it once for each.

if(CPACK_GENERATOR STREQUAL DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
