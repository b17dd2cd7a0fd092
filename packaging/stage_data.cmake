# Copies the demonstration catalogue and, when it exists, the user guide into the build
# folder's share/ tree. Run with -DDEMO=file -DGUIDE=folder -DSHARE=folder.
file(MAKE_DIRECTORY ${SHARE}/ostrel)
file(COPY ${DEMO} DESTINATION ${SHARE}/ostrel)
if(IS_DIRECTORY ${GUIDE})
  file(MAKE_DIRECTORY ${SHARE}/doc/ostrel)
  file(COPY ${GUIDE}/ DESTINATION ${SHARE}/doc/ostrel)
  # The guide's pages show the program's pictures from its screenshots folder.
  file(COPY ${GUIDE}/../screenshots DESTINATION ${SHARE}/doc/ostrel)
endif()
