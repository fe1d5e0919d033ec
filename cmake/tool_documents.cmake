# The tool's documents, written by the tool: manual pages, completions, references of the flags and of what it finds.
set(tool_documents ${PROJECT_BINARY_DIR}/tool_documents)
file(MAKE_DIRECTORY ${tool_documents})
set(manual_1 ${tool_documents}/orvane-config.1)
set(manual_5 ${tool_documents}/orvane-runtime-files.5)
set(manual_7 ${tool_documents}/orvane-flags.7)
set(manuals ${PROJECT_SOURCE_DIR}/tools/orvane-config/manuals)
add_executable(orvane-manuals
    ${manuals}/write_pages.cpp ${manuals}/tool_page.cpp ${manuals}/flags_page.cpp ${manuals}/files_page.cpp)
zep_config_rules(orvane-manuals)
zep_config_tool_inside(orvane-manuals)
add_custom_command(OUTPUT ${manual_1} ${manual_5} ${manual_7} ${tool_documents}/orvane-config
    ${tool_documents}/_orvane-config ${tool_documents}/orvane-config.fish ${tool_documents}/flags.md ${tool_documents}/explain.md
    COMMAND orvane-manuals ${tool_documents}
    COMMAND orvane-config explain flags --format markdown > ${tool_documents}/flags.md
    COMMAND orvane-config explain ids --format markdown > ${tool_documents}/explain.md
    COMMAND orvane-config completions bash > ${tool_documents}/orvane-config
    COMMAND orvane-config completions zsh > ${tool_documents}/_orvane-config
    COMMAND orvane-config completions fish > ${tool_documents}/orvane-config.fish
    DEPENDS orvane-config orvane-manuals VERBATIM)
add_custom_target(tool_documents ALL DEPENDS ${manual_1} ${tool_documents}/flags.md ${tool_documents}/explain.md)
