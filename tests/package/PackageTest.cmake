# Installs version VERSION from the build tree BUILD of the checkout SOURCE elsewhere and uses it from there: the program exports the
# example, another project links the core (built by COMPILER with FLAGS), CPack's packages hold what they should.
set(work "${BUILD}/package-test")
file(REMOVE_RECURSE "${work}")

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

# --- the program, moved away from its build tree ---
set(root "${work}/installed")
run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${root}")
set(ENV{XDG_DATA_HOME} "${work}/data")
run("${root}/bin/tq4x" export "${SOURCE}/examples/lighthouse/lighthouse.glb" -o "${work}/out" -n lighthouse)
run("${root}/bin/tq4x" check "${work}/out")

# --- the core in another project ---
run(${CMAKE_COMMAND} -G Ninja -S "${SOURCE}/examples/core-consumer" -B "${work}/consumer"
    "-DCMAKE_PREFIX_PATH=${root}" "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run(${CMAKE_COMMAND} --build "${work}/consumer")
run("${work}/consumer/write_camera" "${work}/rising.qcam")
run("${root}/bin/tq4x" check "${work}/rising.qcam")

# --- the packages ---
run(${CMAKE_CPACK_COMMAND} --config "${BUILD}/CPackConfig.cmake" -B "${work}/packages")
set(program_files bin/tq4x lib/tq4x/TQ4X_ForPennonExport.so lib/tq4x/libxsi.so
    share/doc/tq4x/CHANGELOG.md share/doc/tq4x/LICENSE share/doc/tq4x/README.md share/doc/tq4x/copyright)
set(development_files lib/cmake/tq4x/tq4xConfig.cmake lib/cmake/tq4x/tq4xConfigVersion.cmake
    lib/cmake/tq4x/tq4xTargets-CONFIG.cmake lib/cmake/tq4x/tq4xTargets.cmake lib/libtq4x_core.a
    share/doc/libtq4x-core-dev/copyright)
file(GLOB configured "${root}/lib/cmake/tq4x/tq4xTargets-*.cmake")
cmake_path(GET configured FILENAME configured)
list(TRANSFORM development_files REPLACE "tq4xTargets-CONFIG.cmake" "${configured}")

foreach(pair "tq4x;program_files" "libtq4x-core-dev;development_files")
    list(POP_FRONT pair package files)
    file(GLOB deb "${work}/packages/${package}_*.deb")
    run(dpkg-deb --extract "${deb}" "${work}/${package}")
    expect_files("${work}/${package}/usr" "${${files}}")
    file(GLOB sum "${deb}.sha256")
    run(${CMAKE_COMMAND} -E cat "${sum}")
    file(SHA256 "${deb}" expected)
    if(NOT output MATCHES "${expected}")
        message(FATAL_ERROR "${sum} tells another checksum than ${expected}: ${output}")
    endif()
endforeach()
file(GLOB deb "${work}/packages/tq4x_*.deb")
run(dpkg-deb --field "${deb}" Depends)
if(NOT output MATCHES "libpng16-16")
    message(FATAL_ERROR "The program's package does not tell its libraries: ${output}")
endif()
run("${work}/tq4x/usr/bin/tq4x" commands)

foreach(pair "tq4x;program_files" "tq4x-core-dev;development_files")
    list(POP_FRONT pair package files)
    file(ARCHIVE_EXTRACT INPUT "${work}/packages/${package}-${VERSION}-Linux.tar.gz" DESTINATION "${work}/unpacked")
    expect_files("${work}/unpacked" "${${files}}")
    file(REMOVE_RECURSE "${work}/unpacked")
endforeach()
message(STATUS "1 passed, 0 failed")
