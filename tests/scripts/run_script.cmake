# Runs one command script in a fresh folder that has the examples and the test data beside it:
# NAME.inf in data/ is there as the settings, NAME_desktop.inf as what the program remembers.
#   cmake -DPROGRAM=... -DSOURCE=... -DSCRIPT=... -DFOLDER=... [-DMODEL=...] -P run_script.cmake
# The script must exit with 0, and print what data/NAME.out holds when there is such a file.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(CREATE_LINK ${SOURCE}/examples ${FOLDER}/examples SYMBOLIC)
file(CREATE_LINK ${SOURCE}/tests/data ${FOLDER}/data SYMBOLIC)
# Relative, so that the settings hold the same paths wherever the tests run.
set(ENV{ORMEL_HOME} home)
string(REGEX REPLACE "scripts/([^/]*).script$" "data/\\1.inf" settings ${SCRIPT})
if(EXISTS ${settings})
  configure_file(${settings} ${FOLDER}/home/Settings.inf COPYONLY)
endif()
string(REPLACE ".inf" "_desktop.inf" memory ${settings})
if(EXISTS ${memory})
  configure_file(${memory} ${FOLDER}/home/Desktop.inf COPYONLY)
endif()
execute_process(
  COMMAND ${PROGRAM} --script ${SCRIPT} ${MODEL}
  WORKING_DIRECTORY ${FOLDER}
  RESULT_VARIABLE status OUTPUT_VARIABLE printed ERROR_VARIABLE faults)
message("${printed}${faults}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "exit status ${status}")
endif()
string(REGEX REPLACE "scripts/([^/]*).script$" "data/\\1.out" expected ${SCRIPT})
if(EXISTS ${expected})
  file(READ ${expected} wanted)
  if(NOT printed STREQUAL wanted)
    message(FATAL_ERROR "what it printed is not what ${expected} holds")
  endif()
endif()
