# Installs the current build into a fresh prefix, then configures, builds and runs the host in
# host/ and the README's minimal host (EXAMPLE_DIR) against it, the way an application outside
# this tree would use the SDK.
# Run with: cmake -DBINARY_DIR=... -DWORK_DIR=... -DHOST_DIR=... -DEXAMPLE_DIR=... -DGENERATOR=...
#           -DCXX=... -P this
foreach(var BINARY_DIR WORK_DIR HOST_DIR EXAMPLE_DIR GENERATOR CXX)
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

function(build_against_prefix source binary)
    # The package registries could find the build tree instead of the prefix; keep them out.
    run(${CMAKE_COMMAND} -S ${source} -B ${binary} -G ${GENERATOR}
        -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_PREFIX_PATH=${prefix}
        -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DCMAKE_FIND_USE_SYSTEM_PACKAGE_REGISTRY=OFF)
    run(${CMAKE_COMMAND} --build ${binary})
endfunction()

build_against_prefix(${HOST_DIR} ${WORK_DIR}/host)
run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK_DIR}/host/tessara_host)
message(STATUS "${last_output}")

# The README's walk-through runs this host against the reference backend; here no backend is
# needed: with a URL the client cannot use, the start must fail through the callback and end
# the program with status 1.
build_against_prefix(${EXAMPLE_DIR} ${WORK_DIR}/minimal-host)
execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
                        ${WORK_DIR}/minimal-host/minimal-host "unusable:"
    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out TIMEOUT 30)
if(NOT status EQUAL 1 OR NOT out MATCHES "start failed:")
    message(FATAL_ERROR "minimal host: expected a failed start with status 1, got ${status}:\n${out}")
endif()
message(STATUS "${out}")
