# cmake -DREADME=<file> -DCOMMAND_LINE=<text> -DEXPECTED=<file> -P ReadmeShowsOutput.cmake
# Fails unless the README shows "$ COMMAND_LINE" followed by the expected output,
# so that what it shows is what the tool prints.
cmake_minimum_required(VERSION 3.25)
file(READ ${README} readme)
file(READ ${EXPECTED} expected)
string(FIND "${readme}" "$ ${COMMAND_LINE}\n${expected}" found)
if(found EQUAL -1)
  message(FATAL_ERROR "${README} does not show '${COMMAND_LINE}' with the output of ${EXPECTED}")
endif()
