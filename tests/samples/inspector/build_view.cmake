# Installs the editor of a build folder into ${DESK}/editor and builds the view of ${VIEW} with it in ${DESK}/view. Quiet unless it fails.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
    if(result)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\n${said}")
    endif()
endfunction()

string(REPLACE ";" "\;" prefixes "${DESK}/editor;${PREFIXES}")
run(${CMAKE_COMMAND} --install ${EDITOR} --prefix ${DESK}/editor)
run(${CMAKE_COMMAND} -S ${VIEW} -B ${DESK}/view -G ${GENERATOR} "-DCMAKE_PREFIX_PATH=${prefixes}"
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_CXX_FLAGS=${FLAGS}
    -DCMAKE_BUILD_TYPE=${TYPE})
run(${CMAKE_COMMAND} --build ${DESK}/view)
