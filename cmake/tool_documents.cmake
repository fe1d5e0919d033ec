# The tool's documents, written by the tool: manual page, completion, references of the flags and of the warnings.
set(tool_documents ${PROJECT_BINARY_DIR}/tool_documents)
file(MAKE_DIRECTORY ${tool_documents})
set(manual ${tool_documents}/orvane-config.1)
add_custom_command(OUTPUT ${manual} ${tool_documents}/orvane-config
    ${tool_documents}/_orvane-config ${tool_documents}/orvane-config.fish ${tool_documents}/flags.md ${tool_documents}/explain.md
    COMMAND orvane-config flags --format man > ${manual}
    COMMAND orvane-config explain --format man >> ${manual}
    COMMAND orvane-config flags --format markdown > ${tool_documents}/flags.md
    COMMAND orvane-config explain --format markdown > ${tool_documents}/explain.md
    COMMAND orvane-config completions bash > ${tool_documents}/orvane-config
    COMMAND orvane-config completions zsh > ${tool_documents}/_orvane-config
    COMMAND orvane-config completions fish > ${tool_documents}/orvane-config.fish
    DEPENDS orvane-config VERBATIM)
add_custom_target(tool_documents ALL DEPENDS ${manual} ${tool_documents}/flags.md ${tool_documents}/explain.md)
