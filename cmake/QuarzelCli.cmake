# The target quarzel_cli11: the headers of CLI11, which are the same for every processor. A cross
# compiler does not search /usr/include, and would find too much there, so it gets a folder with
# nothing but them.
find_path(QUARZEL_CLI11_FOLDER CLI.hpp REQUIRED NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/CLI
          DOC "Folder of CLI.hpp")
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/headers")
file(CREATE_LINK "${QUARZEL_CLI11_FOLDER}" "${CMAKE_BINARY_DIR}/headers/CLI" SYMBOLIC)
add_library(quarzel_cli11 INTERFACE)
target_compile_options(quarzel_cli11 INTERFACE "-idirafter${CMAKE_BINARY_DIR}/headers")

# For sources that include them, which takes as long to optimise as a whole folder. A command line is
# read once.
function(quarzel_reads_command_line source)
    set_source_files_properties(${source} PROPERTIES SKIP_PRECOMPILE_HEADERS ON  # other options
        COMPILE_OPTIONS "$<IF:$<CONFIG:Debug>,-O0,-O1>")
endfunction()
