# install_directories("INSTALL-OPTIONS" DIRECTORY...): installation begins with those directories that are missing.
# CMake would apply the user's umask to them, but not to the files, and a web server could not read what is in them.
include(GNUInstallDirs)

function(install_directories options)
  install(CODE "
    foreach(directory ${ARGN})
      get_filename_component(directory \"\${directory}\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
      execute_process(COMMAND sh -c [[umask 022; mkdir -p \"$1\"]] sh \"\$ENV{DESTDIR}\${directory}\")
    endforeach()"
    ${options})
endfunction()
