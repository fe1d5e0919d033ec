# A client that knows only the server's flags: finds it by its files, connects, fails to start a second server, and stops it.
cmake_policy(SET CMP0054 NEW)

# The control file is the last one that is written.
foreach(attempt RANGE 300)
    if(EXISTS ${RUNTIME}/control)
        file(READ ${RUNTIME}/control control)
        if(control)
            break()
        endif()
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E sleep 0.1)
endforeach()

# reads(FILE FORM): checks the file's bytes, and stores them in the variable of its name.
function(reads file form)
    file(READ ${RUNTIME}/${file} content)
    if(NOT content MATCHES "^${form}$")
        message(FATAL_ERROR "${file}: '${content}'")
    endif()
    set(${file} ${content} PARENT_SCOPE)
endfunction()
reads(main.pid "[1-9][0-9]*")
reads(http "127\\.0\\.0\\.1:[1-9][0-9]*")
reads(https "[^:]+:[1-9][0-9]*")
reads(control "127\\.0\\.0\\.1:[1-9][0-9]*")

# Runs the shell functions of the documentation on these files and on files that no server has written.
if(READERS)
    file(READ ${READERS} readers)
    string(REGEX REPLACE "^.*\n```sh\n" "" readers "${readers}")
    string(FIND "${readers}" "\n```" end)
    string(SUBSTRING "${readers}" 0 ${end} readers)
    set(damaged ${RUNTIME}/../damaged)
    file(MAKE_DIRECTORY ${damaged})
    file(WRITE ${damaged}/script.sh "${readers}
        set -e
        refused() { if \"$@\"; then echo \"taken: $*\"; exit 1; fi; }
        server_pid '${RUNTIME}'
        server_endpoint '${RUNTIME}' control
        printf '[::1]:80' >'${damaged}/control'
        server_endpoint '${damaged}' control
        refused server_pid '${damaged}/nowhere'
        refused server_endpoint '${damaged}' http
        for text in '' 0 ${main.pid}x -1 4294967295 99999999999; do
            printf %s \"$text\" >'${damaged}/main.pid'
            refused server_pid '${damaged}'
        done
        for text in '' 80 :80 localhost localhost: localhost:http localhost:65536 localhost:0; do
            printf %s \"$text\" >'${damaged}/http'
            refused server_endpoint '${damaged}' http
        done
        echo read")
    execute_process(COMMAND sh ${damaged}/script.sh OUTPUT_VARIABLE read)
    string(REPLACE ":" " " endpoint ${control})
    if(NOT read STREQUAL "${main.pid}\n${endpoint}\n::1 80\nread\n")
        message(FATAL_ERROR "the readers of ${READERS} print:\n${read}")
    endif()
endif()

function(visit where expected)
    file(DOWNLOAD http://${where}/ ${RUNTIME}/../answer TIMEOUT 20 STATUS status)
    file(READ ${RUNTIME}/../answer answer)
    if(NOT status MATCHES "^0;" OR NOT answer STREQUAL "${expected}")
        message(FATAL_ERROR "http://${where}/: ${status}, '${answer}'")
    endif()
endfunction()
visit(${http} "running\n")

# The second server must refuse to start, and must leave what the first has published.
execute_process(COMMAND ${SERVER} ${FLAGS} ERROR_VARIABLE said RESULT_VARIABLE result TIMEOUT 120)
if(NOT result EQUAL 1 OR NOT said MATCHES "process ${main.pid} is running and owns main.pid")
    message(FATAL_ERROR "a second server ended with ${result}: ${said}")
endif()
reads(main.pid ${main.pid})

visit(${control} "stopping\n")
