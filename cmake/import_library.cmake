# Script: writes the import library LIBRARY from the decorated names that the objects define.
execute_process(COMMAND ${NM} --defined-only ${OBJECTS} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "_vek[A-Za-z0-9]+@[0-9]+" decorated "${symbols}")
list(REMOVE_DUPLICATES decorated)
list(TRANSFORM decorated REPLACE "^_" "")
list(JOIN decorated "\n" lines)
file(WRITE ${WORK}/vekm6-import.def "LIBRARY vekm6.dll\nEXPORTS\n${lines}\n")
# The tool makes names of members and symbols of the library's path: it is to be the same wherever the build is.
get_filename_component(name ${LIBRARY} NAME)
get_filename_component(directory ${LIBRARY} DIRECTORY)
execute_process(COMMAND ${DLLTOOL} --kill-at --input-def ${WORK}/vekm6-import.def --output-lib ${name}
                WORKING_DIRECTORY ${directory} COMMAND_ERROR_IS_FATAL ANY)
