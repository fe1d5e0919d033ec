# Run by cpack. With SOURCE_DATE_EPOCH, two archives of the same files are the same file.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND python3 ${CMAKE_CURRENT_LIST_DIR}/same_zip.py ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
endif()
