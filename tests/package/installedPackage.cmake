# Installs the build tree BUILD_DIR and uses the installation as others would: a program that finds
# the package veltra_reference runs a query, and the library is built once more on the installed
# host as on a foreign one. CXX and SOURCE_DIR are those of the build; WORK_DIR is overwritten.
# PYTHON, where it is set, is the interpreter that the Python package in PYTHON_DIR is for.

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ECHO STDOUT RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed: ${ARGV}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")
# Without debug information, which names the sources where they were built.
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}" --strip)

# What is installed stands by itself: nothing in it names the folders that it was built from.
foreach(folder IN ITEMS "${SOURCE_DIR}" "${BUILD_DIR}")
    execute_process(COMMAND grep --recursive --files-with-matches --fixed-strings "${folder}" "${prefix}"
                    OUTPUT_VARIABLE files RESULT_VARIABLE result)
    if(NOT result EQUAL 1)
        message(FATAL_ERROR "these installed files hold the path ${folder}:\n${files}")
    endif()
endforeach()

# The installed documentation has been compiled, and is read from its images: compiling it again finds
# nothing to do.
if(EXISTS "${prefix}/bin/vref")
    execute_process(COMMAND "${prefix}/bin/vref" compile "${prefix}/share/veltra/documentation-set"
                    OUTPUT_VARIABLE compiled RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT compiled MATCHES "^compiled: 0 files \\([1-9][0-9]* as they were\\)")
        message(FATAL_ERROR "the installed documentation has not been compiled: ${compiled}")
    endif()
endif()

foreach(script IN ITEMS bash-completion/completions/vref zsh/site-functions/_vref
        fish/vendor_completions.d/vref.fish)
    if(EXISTS "${prefix}/bin/vref" AND NOT EXISTS "${prefix}/share/${script}")
        message(FATAL_ERROR "the completion script share/${script} is not installed")
    endif()
endforeach()

# The program that the README shows is built too.
file(READ "${SOURCE_DIR}/README.md" readme)
string(REGEX MATCH "```cpp\n(.*)\n```\n\n```cmake" ignored "${readme}")
file(WRITE "${WORK_DIR}/readme.cpp" "${CMAKE_MATCH_1}\n")

run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${WORK_DIR}/consumer" -G Ninja
    "-DREADME_PROGRAM=${WORK_DIR}/readme.cpp"
    "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer")
run("${WORK_DIR}/consumer/consumer")
run("${WORK_DIR}/consumer/readme")

if(PYTHON)
    set(package "${prefix}/${PYTHON_DIR}")
    run("${CMAKE_COMMAND}" -E env "PYTHONPATH=${package}"
        "${PYTHON}" "${SOURCE_DIR}/examples/python/look_up.py" filter)
    if(NOT EXISTS "${package}/veltra/internal/reference/api/__init__.pyi")
        message(FATAL_ERROR "the type stubs are not installed")
    endif()
endif()

run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/provider" -G Ninja
    "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}" -DVELTRA_HOST_PROVIDER=veltra_host
    -DVELTRA_BUILD_TOOLS=OFF -DVELTRA_BUILD_TESTS=OFF -DVELTRA_BUILD_EXAMPLES=OFF
    -DVELTRA_BUILD_PYTHON=OFF)
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/provider")
file(GLOB_RECURSE hosts "${WORK_DIR}/provider/*libveltra_host*")
if(hosts)
    message(FATAL_ERROR "the embedded host was built although another provider was named: ${hosts}")
endif()
