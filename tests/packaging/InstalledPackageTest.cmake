# Installs the current build into a fresh prefix, then configures, builds and runs the host in
# host/ against it, the way an application outside this tree would use the SDK.
# Run with: cmake -DBINARY_DIR=... -DWORK_DIR=... -DHOST_DIR=... -DGENERATOR=... -DCXX=... -P this
foreach(var BINARY_DIR WORK_DIR HOST_DIR GENERATOR CXX)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed (${status}): ${ARGN}\n${out}")
    endif()
    set(last_output "${out}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix})
foreach(installed include/tessara/api/Tessara.h lib/cmake/Tessara/TessaraConfig.cmake)
    if(NOT EXISTS ${prefix}/${installed})
        message(FATAL_ERROR "not installed: ${installed}")
    endif()
endforeach()
# Only the public headers travel: the private ones live under src/, never under include/.
file(GLOB_RECURSE private_headers ${prefix}/include/tessara/form/*.h ${prefix}/include/tessara/ui/*.h)
if(private_headers)
    message(FATAL_ERROR "private headers installed: ${private_headers}")
endif()

# The package registries could find the build tree instead of the prefix; keep them out.
run(${CMAKE_COMMAND} -S ${HOST_DIR} -B ${WORK_DIR}/host -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DCMAKE_FIND_USE_SYSTEM_PACKAGE_REGISTRY=OFF)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/host)
run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK_DIR}/host/tessara_host)
message(STATUS "${last_output}")
