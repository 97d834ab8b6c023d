# Copies the committed game files (level sets, help) into the build's game folder.
# Run with -DSOURCE=... -DDEST=...; a missing source folder is nothing to copy.
if(EXISTS "${SOURCE}")
  file(COPY "${SOURCE}/" DESTINATION "${DEST}")
endif()
