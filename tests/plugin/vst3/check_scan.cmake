# Lets a host's own scanner look at the bundle. Ardour is the host of Debian that has one.
cmake_minimum_required(VERSION 3.25)
file(GLOB scanners /usr/lib/ardour*/ardour-vst3-scanner)
if(NOT scanners)
    message("SKIPPED: no ardour-vst3-scanner (package ardour)")
    return()
endif()
list(GET scanners 0 scanner)
cmake_path(GET scanner PARENT_PATH libraries)
# It keeps a cache in the home folder.
file(MAKE_DIRECTORY "${HOME}")
execute_process(
    COMMAND ${CMAKE_COMMAND} -E env "HOME=${HOME}" "LD_LIBRARY_PATH=${libraries}"
        "${scanner}" -v -f "${BUNDLE}"
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
set(expected "<VST3Info uid=\"56535473656E69717561727A656C2073\" name=\"Quarzel Strings\"[^>]* n_inputs=\"0\" n_outputs=\"2\"[^>]* n_midi_inputs=\"1\" n_midi_outputs=\"0\"")
if(NOT result EQUAL 0 OR NOT output MATCHES "${expected}")
    message(FATAL_ERROR "The scanner does not accept the bundle (${result}):\n${output}")
endif()
