# cmake -DSRC=file -DDEST=file -P copy-if-missing.cmake
# Puts a shipped data file into the application folder once; a copy that is
# already there may have been changed by the user and stays as it is.
if(NOT EXISTS "${DEST}")
  configure_file("${SRC}" "${DEST}" COPYONLY)
endif()
