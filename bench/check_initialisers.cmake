# Compares the sources whose code runs when a library is loaded with those that are ALLOWED: -DNM= -DLIBRARY= -DALLOWED=
execute_process(COMMAND ${NM} ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "frame_dummy")
    message(FATAL_ERROR "no local symbols in ${LIBRARY}: has it been stripped?")
endif()
string(REGEX MATCHALL "_GLOBAL__sub_I_[^\n]*" found "${symbols}")
list(TRANSFORM found REPLACE "_GLOBAL__sub_I_" "")
if(NOT "${found}" STREQUAL "${ALLOWED}")
    message(FATAL_ERROR "initialised at every load are objects in [${found}], but expected in [${ALLOWED}]: "
        "make what is new a constant, or build it at its first use")
endif()
