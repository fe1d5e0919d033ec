# Run by cpack before it makes the packages. The variables for this, CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS and CPack's
# own, cannot restore permissions that the umask removes.
file(GLOB_RECURSE entries LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(entry ${entries})
    if(IS_DIRECTORY ${entry})
        file(CHMOD ${entry}
            PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    endif()
endforeach()
